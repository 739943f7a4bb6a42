#include "station/report/HtmlStyle.h"

namespace station::report {

namespace {

constexpr char Sheet[] = R"css(
:root {
  --page: #f4f6f9; --card: #ffffff; --line: #dfe4ea; --text: #1a2330; --quiet: #566173;
  --passed: #1f8a5f; --failed: #cf3f53; --erred: #8448b5; --stopped: #7d8694; --open: #c3cad4;
  --count: #2f6fd0; --track: #e9edf2;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    --page: #12161c; --card: #1b212a; --line: #303945; --text: #e8ecf2; --quiet: #a3aebd;
    --passed: #3cb583; --failed: #f0707f; --erred: #b88ae6; --stopped: #8d97a6; --open: #515c6a;
    --count: #6aa2f7; --track: #2a323d;
  }
}
* { box-sizing: border-box; }
html { color-scheme: light dark; -webkit-text-size-adjust: 100%; }
body {
  margin: 0; padding: 2rem 1.25rem 3rem; background: var(--page); color: var(--text);
  font: 15px/1.5 system-ui, "DejaVu Sans", sans-serif; font-variant-numeric: tabular-nums;
}
main, header, footer { max-width: 70rem; margin: 0 auto; }
h1 { margin: 0; font-size: 1.75rem; line-height: 1.25; overflow-wrap: anywhere; }
h2 { margin: 0 0 .75rem; max-height: 6em; overflow-y: auto; font-size: 1.1rem; overflow-wrap: anywhere; }
p { margin: 0; }
.under, .note, footer { color: var(--quiet); font-size: .875rem; }
.under { margin-top: .25rem; overflow-wrap: anywhere; }
.note { margin-top: .75rem; }
footer { margin-top: 1.5rem; }
section {
  margin-top: 1.25rem; padding: 1.25rem; background: var(--card); border: 1px solid var(--line);
  border-radius: .75rem;
}
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(8.5rem, 1fr)); gap: .75rem; margin: 1.25rem 0 0; }
.tiles div { padding: .75rem 1rem; background: var(--card); border: 1px solid var(--line); border-radius: .75rem; }
.tiles dt { color: var(--quiet); font-size: .8125rem; }
.tiles dd { margin: 0; font-size: 1.5rem; font-weight: 600; line-height: 1.3; white-space: nowrap; }
.wide { overflow-x: auto; }
table { width: 100%; border-collapse: collapse; font-size: .9375rem; }
th, td { padding: .375rem .5rem; border-bottom: 1px solid var(--line); text-align: left; white-space: nowrap; }
tr > :first-child { padding-left: 0; }
tr > :last-child { padding-right: 0; }
tbody tr:last-child > * { border-bottom: 0; }
th { color: var(--quiet); font-size: .8125rem; font-weight: 600; }
td { unicode-bidi: isolate; vertical-align: top; }
td.long { min-width: 14rem; overflow-wrap: anywhere; white-space: pre-wrap; }
td.long div { max-height: 9em; overflow-y: auto; }
.number { text-align: right; }
td.plot { vertical-align: middle; width: 70%; min-width: 7rem; }
td.outcome { font-weight: 600; }
td.passed { color: color-mix(in srgb, var(--passed) 82%, var(--text)); }
td.failed { color: var(--failed); }
td.erred { color: var(--erred); }
td.stopped, td.open { color: var(--quiet); }
tr.unit td { background: color-mix(in srgb, var(--count) 12%, transparent); }
svg { display: block; width: 100%; }
svg.bar { height: .875rem; background: var(--track); border-radius: .1875rem; }
svg.columns { height: 11rem; border-bottom: 1px solid var(--quiet); border-top: 1px dashed var(--line); }
rect.passed { fill: var(--passed); } rect.failed { fill: var(--failed); } rect.erred { fill: var(--erred); }
rect.stopped { fill: var(--stopped); } rect.open { fill: var(--open); } rect.count { fill: var(--count); }
.course { display: grid; grid-template-columns: auto 1fr; column-gap: .625rem; }
.scale { display: flex; flex-direction: column; justify-content: space-between; text-align: right; color: var(--quiet); font-size: .8125rem; line-height: 1; }
.dates { grid-column: 2; display: flex; justify-content: space-between; margin-top: .375rem; color: var(--quiet); font-size: .8125rem; }
.legend { display: flex; flex-wrap: wrap; gap: .25rem 1rem; margin-bottom: .75rem; color: var(--quiet); font-size: .8125rem; }
.legend i { display: inline-block; width: .75rem; height: .75rem; margin-right: .375rem; border-radius: .1875rem; vertical-align: -.0625rem; }
i.passed { background: var(--passed); } i.failed { background: var(--failed); } i.erred { background: var(--erred); }
i.stopped { background: var(--stopped); } i.open { background: var(--open); }
@media (max-width: 40rem) {
  body { padding: 1.25rem .75rem 2rem; }
  section { padding: 1rem .875rem; }
  h1 { font-size: 1.375rem; }
  .tiles { grid-template-columns: repeat(2, 1fr); }
  .tiles dd { font-size: 1.25rem; }
}
@media print {
  html { font-size: 10px; }
  body { padding: 0; background: none; font-size: 1rem; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  section, .tiles div { border-radius: 0; border-color: #bbb; }
  h2, .legend { break-after: avoid; }
  tr, .course, .tiles { break-inside: avoid; }
  .tiles { grid-template-columns: repeat(6, 1fr); }
  .wide { overflow: visible; }
  th, td { padding: .2rem .4rem; }
  td.long { min-width: 8rem; }
  td.long div, h2 { max-height: none; }
}
)css";

} // namespace

QString styleSheet()
{
    return QString::fromLatin1(Sheet);
}

} // namespace station::report

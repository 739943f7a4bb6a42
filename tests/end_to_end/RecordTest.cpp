#include "tests/end_to_end/StationRun.h"
#include "tests/support/Wait.h"

#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <functional>

using testsupport::StationRun;

namespace {

using Furnish = std::function<void(StationRun &)>;

/// A run that was recorded.
struct Recorded
{
    int status = -1;
    QString script;
    std::string results; ///< A line each, sorted, without what differs from run to run.
    std::string everything;
};

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

std::string comparable(const QList<QJsonObject> &results)
{
    QStringList lines;
    for (QJsonObject line : results) {
        for (const char *key : {"run", "time", "start", "configuration"})
            line.remove(QLatin1String(key));
        lines.append(QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)));
    }
    lines.sort();
    return lines.join('\n').toStdString();
}

Recorded record(const Furnish &furnish, const QString &operatorScript)
{
    StationRun run;
    furnish(run);
    const QString path = run.path("record.lua");
    run.operatorDoes(operatorScript).argument("--record").argument(path).run();
    return {run.status(), contentOf(path), comparable(run.results()), run.everything().toStdString()};
}

/// What is done, without what only a reader sees and the limits.
std::string deeds(const QString &script)
{
    QStringList lines;
    for (const QString &line : script.split('\n')) {
        if (line.startsWith("operator."))
            lines.append(QString(line).replace(QRegularExpression("\\d+ \\* 60\\)$"), "limit)"));
    }
    return lines.join('\n').toStdString();
}

/// Records what the operator's script does, lets the recording do it again, and expects the same results and
/// the same recording. Returns the first one.
Recorded replayed(const Furnish &furnish, const QString &operatorScript, int status = 0)
{
    const Recorded first = record(furnish, operatorScript);
    EXPECT_EQ(first.status, status) << first.everything;
    const Recorded second = record(furnish, first.script);
    EXPECT_EQ(second.status, status) << first.script.toStdString() << second.everything;
    EXPECT_EQ(second.results, first.results) << first.script.toStdString() << second.everything;
    EXPECT_EQ(deeds(second.script), deeds(first.script));
    return first;
}

Furnish oneSystem(const QString &lua)
{
    return [lua](StationRun &run) { run.perSystem(lua); };
}

} // namespace

/// Starts a station that records, and returns when its operator has scanned 4711. Returns the recording's
/// path.
QString startAndScan(StationRun &run)
{
    const QString path = run.path("record.lua");
    run.perSystem("return showView(systemIndex, { input = { 'SN' } }) ~= nil")
        .operatorDoes("operator.waitForPanel('0', 20) operator.scan('4711')\n"
                      "operator.screenshot('" +
                      run.path("typed.png") + "') operator.sleep(1000)")
        .argument("--record")
        .argument(path)
        .start();
    EXPECT_TRUE(testsupport::waitUntil([&] { return QFile::exists(run.path("typed.png")); }));
    return path;
}

TEST(Record, WritesAReadableScript)
{
    const Recorded run = replayed(oneSystem("showView(systemIndex, { input = { 'SN' } })\n"
                                            "return showView(systemIndex, { message = 'Lid shut?',\n"
                                            "    button = { 'No', 'Yes' } }) == true"),
                                  "operator.waitForPanel('0', 20)\n"
                                  "operator.type('47x\\b11\\n')\n"
                                  "operator.click{panel='0', title='OK'}\n"
                                  "operator.waitForPanelGone('0', 20)\n"
                                  "operator.waitForPanel('0', 20)\n"
                                  "operator.click{panel='0', title='Yes'}\n");
    QString script = run.script;
    script.replace(QRegularExpression("\\d{4}-\\d\\d-\\d\\d"), "DATE");
    script.replace(QRegularExpression("\\d\\d:\\d\\d:\\d\\d"), "TIME");
    EXPECT_EQ(script.toStdString(),
              "-- What was done at the station \"Test station\" on DATE; --operator does it again.\n"
              "local limit = 60 -- seconds that a wait may take\n"
              "\n"
              "-- Run 1, TIME\n"
              "operator.waitForPanel(\"0\", limit)\n"
              "operator.enter(\"0-SN\", \"4711\")\n"
              "operator.click({ panel = \"0\", title = \"OK\" })\n"
              "operator.waitForPanelGone(\"0\", limit)\n"
              "operator.waitForPanel(\"0\", limit)\n"
              "operator.click({ panel = \"0\", title = \"Yes\" })\n");
}

TEST(Record, OfAWholeRunGivesTheSameResultsAndTheSameRecording)
{
    const Furnish station = [](StationRun &run) {
        run.file("slot.lua",
                 "showView(systemIndex, { input = { 'SN' }, validate = function(text)\n"
                 "    sleep(0.05) return text ~= 'bad', 'known to be bad' end })\n"
                 "showView(systemIndex, { input = { 'V' }, number = { min = 1, decimals = 2 } })\n"
                 "rendezvous('slots') return true\n");
        run.file("group.lua", "rendezvous('slots')\n"
                              "showGroupView(groupNumber, { input = { 'S1', 'S2' }, length = 4 })\n"
                              "showGroupView(groupNumber, { switch = { 'S1', 'S2' } })\n"
                              "showGroupView(groupNumber, { input = { 'S1', 'S2' },\n"
                              "    choices = { 'Red', 'Green', 'Blue' }, autoConfirm = true })\n"
                              "showGroupView(groupNumber, { input = { 'S9' } })\n"
                              "return true\n");
        run.config("[station]\nname = 'Two groups'\nlocale = 'de_DE'\n"
                   "groups = ['G1', 'G2']\nslots = ['S1', 'S2']\n"
                   "[[sequence]]\nscript = 'slot.lua'\nper = 'system'\n"
                   "[[sequence]]\nscript = 'group.lua'\nper = 'group'\n");
    };
    const Recorded run = replayed(
        station,
        // Four panels of two groups at once; a refusal that takes its time; half an entry left and come back
        // to.
        "for system = 0, 3 do operator.waitForPanel(system, 20) end\n"
        "operator.click('0-SN') operator.type('bxx\\b\\bad\\n')\n"
        "eventually(function() return operator.tree('0-StatusLine').text:find('known', 1, true) end, 'no')\n"
        "operator.click('3-SN') operator.type('half')\n"
        "operator.click('0-SN') operator.type('good\\n')\n"
        "operator.click('3-SN') operator.type('third\\n')\n"
        "operator.click('2-SN') operator.scan('second')\n"
        "operator.click('1-SN') operator.scan('first')\n"
        "for system = 0, 3 do operator.waitForText(system .. '-StatusLine', '', 20) end\n"
        "for system = 0, 3 do operator.click{panel=tostring(system), title='OK'} end\n"
        "for system = 0, 3 do operator.waitForPanelGone(system, 20) operator.waitForPanel(system, 20) end\n"
        "for system = 3, 0, -1 do operator.click(system .. '-V') operator.scan('2,' .. system) end\n"
        "for system = 0, 3 do operator.click{panel=tostring(system), title='OK'} end\n"
        // Two group panels; a duplicate; a group switched off and on; a slot opened anew.
        "operator.waitForPanel('G1', 20) operator.waitForPanel('G2', 20)\n"
        "operator.click('G1-SharedInput') operator.scan('0001') operator.scan('0001') operator.scan('0002')\n"
        "operator.click('G2') operator.click('G2')\n"
        "operator.click('G2-SharedInput') operator.scan('1001') operator.scan('12') operator.scan('1002')\n"
        "operator.click{panel='G2', slot='S1'} operator.scan('1003')\n"
        "for _, group in ipairs{'G1', 'G2'} do operator.click{panel=group, title='OK'} end\n"
        "for _, group in ipairs{'G1', 'G2'} do\n"
        "    operator.waitForPanelGone(group, 20) operator.waitForPanel(group, 20) end\n"
        "operator.click{panel='G1', switch='S2'}\n"
        "for _, group in ipairs{'G1', 'G2'} do operator.click{panel=group, title='OK'} end\n"
        "for _, group in ipairs{'G1', 'G2'} do\n"
        "    operator.waitForPanelGone(group, 20) operator.waitForPanel(group, 20) end\n"
        // Choices, which end their panels, and the error panels behind them.
        "operator.click('G1-SharedInput') operator.scan('gr') operator.scan('Blue')\n"
        "operator.click('G2-SharedInput') operator.scan('Red') operator.scan('black') "
        "operator.scan('Green')\n"
        "for _, group in ipairs{'G1', 'G2'} do\n"
        "    eventually(function() return not operator.tree(group .. '-SharedInput') end, 'error')\n"
        "    operator.waitForPanel(group, 20) operator.click{panel=group, title='OK'} end\n");
    EXPECT_TRUE(run.script.contains("operator.waitForText(\"0-StatusLine\", ")) << run.script.toStdString();
    EXPECT_TRUE(run.script.contains("operator.fill(\"3-SN\", \"half\")")) << run.script.toStdString();
    EXPECT_TRUE(run.results.find("\"S1\":\"1003\"") != std::string::npos) << run.results;
    EXPECT_TRUE(run.results.find("2.3") != std::string::npos) << run.results;
}

TEST(Record, TellsThePassesOfALoopAndItsNumber)
{
    const Furnish station = [](StationRun &run) {
        run.slotNames({"S1", "S2"})
            .perGroup("local asked = { { 'S1', 'S2' }, { 'S1' }, { 'S2' } }\n"
                      "local pass, codes = 0, ''\n"
                      "repeat pass = pass + 1\n"
                      "    local answer = showGroupView(groupNumber, { input = asked[pass] })\n"
                      "    codes = codes .. (answer.S1 or '') .. (answer.S2 or '')\n"
                      "until isLoopFinished(groupNumber) == 1\n"
                      "return codes == 'abcd'");
    };
    const Recorded run =
        replayed(station, "operator.waitForPanel('G1', 20)\n"
                          "operator.scan('a')\n"
                          "operator.click('Loop') operator.scan('3')\n"
                          "operator.click('G1-SharedInput') operator.scan('b')\n"
                          "operator.click{panel='G1', title='OK'} operator.waitForPanelGone('G1', 20)\n"
                          "for _, code in ipairs{'c', 'd'} do operator.waitForPanel('G1', 20)\n"
                          "    operator.click('G1-SharedInput') operator.scan(code)\n"
                          "    operator.click{panel='G1', title='OK'}\n"
                          "    operator.waitForPanelGone('G1', 20) end\n");
    EXPECT_TRUE(run.script.contains("operator.enter(\"Loop\", \"3\")")) << run.script.toStdString();
}

TEST(Record, OfStopWithHalfAnEntryAndASecondRun)
{
    const Recorded run = replayed(oneSystem("return showView(systemIndex, { input = { 'SN' } }) ~= nil"),
                                  "operator.waitForPanel('0', 20)\n"
                                  "operator.type('half')\n"
                                  "operator.stop()\n"
                                  "operator.waitForRunEnd(20)\n"
                                  "operator.run()\n"
                                  "operator.waitForPanel('0', 20)\n"
                                  "operator.click('0-SN') operator.scan('whole')\n"
                                  "operator.click{panel='0', title='OK'}\n");
    EXPECT_EQ(deeds(run.script), "operator.waitForPanel(\"0\", limit)\n"
                                 "operator.fill(\"0-SN\", \"half\")\n"
                                 "operator.stop()\n"
                                 "operator.waitForRunEnd(limit)\n"
                                 "operator.run()\n"
                                 "operator.waitForPanel(\"0\", limit)\n"
                                 "operator.enter(\"0-SN\", \"whole\")\n"
                                 "operator.click({ panel = \"0\", title = \"OK\" })");
    EXPECT_TRUE(run.script.contains("-- Run 2, ")) << run.script.toStdString();
}

TEST(Record, OfAPanelThatGoesByItselfWithTextHalfTyped)
{
    replayed(
        oneSystem("local answer, problem = showView(systemIndex, { input = { 'SN' }, timeLimit = 0.5 })\n"
                  "showView(systemIndex, { message = 'Nobody looks', button = { 'Yes' }, timeLimit = 0.5 })\n"
                  "return problem.code == 406 and showView(systemIndex, { input = { 'SN' } }).SN == 'right'"),
        "operator.waitForPanel('0', 20)\n"
        "operator.type('half')\n"
        "operator.waitForPanelGone('0', 20)\n"
        "operator.waitForPanel('0', 20)\n"
        "operator.waitForPanelGone('0', 20)\n"
        "operator.waitForPanel('0', 20)\n"
        "operator.scan('right')\n"
        "operator.click{panel='0', title='OK'}\n");
}

TEST(Record, IsDoneAgainWherePanelsComeInAnotherOrder)
{
    const auto lateFor = [](int system) {
        return [system](StationRun &run) {
            run.slotNames({"S1", "S2"});
            run.perSystem(QStringLiteral("if systemIndex == %1 then sleep(0.3) end\n"
                                         "showView(systemIndex, { input = { 'A' } })\n"
                                         "if systemIndex == %1 then sleep(0.3) end\n"
                                         "return showView(systemIndex, { input = { 'B' } }).B")
                              .arg(system));
        };
    };
    const QString bothTwice = "for _, field in ipairs{'A', 'B'} do for system = 1, 0, -1 do\n"
                              "    local key = tostring(system)\n"
                              "    operator.waitForPanel(key, 20)\n"
                              "    operator.click(key .. '-' .. field) operator.scan(field .. key)\n"
                              "    operator.click{panel=key, title='OK'}\n"
                              "    operator.waitForPanelGone(key, 20) end end\n";
    const Recorded first = record(lateFor(0), bothTwice);
    EXPECT_NE(first.results.find("\"B\":\"B1\""), std::string::npos) << first.everything;
    const Recorded second = record(lateFor(1), first.script);
    EXPECT_EQ(second.results, first.results) << second.everything;
    EXPECT_EQ(deeds(second.script), deeds(first.script));
}

TEST(Record, OfAPressThatIsRefusedAndTheEntryStraightBehindIt)
{
    const Recorded run =
        replayed(oneSystem("return showView(systemIndex, { input = { 'SN' }, length = 4 }).SN"),
                 "operator.waitForPanel('0', 20)\n"
                 "operator.type('12')\n"
                 "operator.click{panel='0', title='OK'} operator.type('3456\\n')\n"
                 "operator.click{panel='0', title='OK'}\n");
    EXPECT_NE(run.results.find("\"SN\":\"3456\""), std::string::npos) << run.results;
    EXPECT_TRUE(run.script.contains("operator.fill(\"0-SN\", \"12\")\n"
                                    "operator.click({ panel = \"0\", title = \"OK\" })\n"
                                    "operator.enter(\"0-SN\", \"3456\")\n"))
        << run.script.toStdString();
}

TEST(Record, EndsWithStopWhenTheStationIsEndedFromOutside)
{
    StationRun run;
    const QString path = startAndScan(run);
    run.process().terminate();
    run.finish();
    EXPECT_TRUE(contentOf(path).endsWith("operator.enter(\"0-SN\", \"4711\")\noperator.stop()\n"))
        << contentOf(path).toStdString();
}

TEST(Record, APastedTextThatWasRefusedIsRefusedAgain)
{
    const Recorded run = replayed(oneSystem("return showView(systemIndex, { input = { 'SN' } }) ~= nil"),
                                  "operator.waitForPanel('0', 20)\n"
                                  "operator.paste('0-SN', 'a\\1\\nb') operator.enter('0-SN')\n"
                                  "operator.scan('4711')\n"
                                  "operator.click{panel='0', title='OK'}\n");
    EXPECT_TRUE(run.script.contains(R"(operator.paste("0-SN", "a\001\nb"))")) << run.script.toStdString();
}

TEST(Record, WhoWorkedInWhichRunIsReplayedWithoutABadgeInTheFile)
{
    const Furnish station = [](StationRun &run) {
        run.file("ask.lua", "return showView(systemIndex, { button = { 'No', 'Yes' } }) == operatorBadge");
        run.config("[station]\ngroups = ['G1']\nslots = ['S1']\nask_operator = true\n"
                   "[scanner]\nprefix = '#'\n[[sequence]]\nscript = 'ask.lua'\n");
        for (const char *badge : {"Anna-1", "Bert-2"})
            run.argument("--badge").argument(badge);
    };
    const QString answer = "operator.waitForPanel('0', 20) operator.click{panel='0', title='Yes'}\n"
                           "operator.waitForRunEnd(20)\n";
    const Recorded run = replayed(station,
                                  answer + "operator.logIn(2) operator.run()\n" + answer +
                                      "operator.logIn(1) operator.logIn(2) operator.run()\n" + answer +
                                      "operator.logIn(1) operator.run()\n" + answer,
                                  1);
    EXPECT_EQ(QString(deeds(run.script).c_str()).count("logIn"), 2) << run.script.toStdString();
    EXPECT_FALSE(run.script.contains("Anna-1") || run.script.contains("Bert-2"));
    QStringList operators;
    for (const QString &line : QString::fromStdString(run.results).split('\n')) {
        const QJsonObject result = QJsonDocument::fromJson(line.toUtf8()).object();
        if (result.contains("station"))
            operators.append(result.value("operator").toString());
    }
    EXPECT_EQ(operators, (QStringList{"Anna-1", "Anna-1", "Bert-2", "Bert-2"})) << "sorted, of four runs";
}

TEST(Record, ABadgeThatTheReplayIsNotGivenIsNamed)
{
    StationRun run;
    run.perSystem("return true").operatorDoes("operator.waitForRunEnd(20) operator.logIn(2)").run();
    EXPECT_EQ(run.status(), 1);
    EXPECT_EQ(run.errorLine(),
              "station: operator: operator.lua:1: there is no badge 2: the station was started "
              "with 0 (--badge TEXT)");
}

TEST(Record, QuotesWhatWasScannedSafely)
{
    const QString entry = QStringLiteral("\\\\\\\"'\\u{1D}]] --\\u{1F600}\\u{202E}");
    const Recorded run = replayed(oneSystem("return showView(systemIndex, { input = { 'SN' } }) ~= nil"),
                                  "operator.waitForPanel('0', 20)\n"
                                  "operator.scan(\"" +
                                      entry +
                                      "\")\n"
                                      "operator.click{panel='0', title='OK'}\n");
    EXPECT_TRUE(run.script.contains(QStringLiteral(R"("\\\"'\029]] --😀\u{202E}")")))
        << run.script.toStdString();
}

TEST(Record, RefusesAFileThatHoldsSomethingAndLeavesItAsItIs)
{
    StationRun run;
    const QString path = run.file("record.lua", "-- mine\n");
    run.perSystem("return true").argument("--record").argument(path).run();
    EXPECT_EQ(run.status(), 2);
    EXPECT_EQ(run.errorLine(), "station: --record: " + path + ": is there already and is not empty");
    EXPECT_EQ(contentOf(path), "-- mine\n");
}

TEST(Record, TakesAnEmptyFile)
{
    StationRun run;
    const QString path = run.file("record.lua", {});
    run.perSystem("return true").argument("--record").argument(path).passes();
    EXPECT_TRUE(contentOf(path).contains("-- Run 1, "));
}

TEST(Record, GoesOnWithoutTheFileWhenTheDiskIsFull)
{
    StationRun run;
    run.perSystem("return showView(systemIndex, { message = 'Lid shut?', button = { 'No', 'Yes' } }) == true")
        .operatorDoes("operator.waitForPanel('0', 20) operator.click{panel='0', title='Yes'}")
        .argument("--record")
        .argument("/dev/full")
        .run();
    EXPECT_EQ(run.status(), 1);
    EXPECT_EQ(run.errorLine(), "station: --record: /dev/full: No space left on device");
    EXPECT_EQ(run.outcome(0), "passed");
}

TEST(Record, HoldsWhatWasDoneWhenTheStationIsKilled)
{
    StationRun run;
    const QString path = startAndScan(run);
    run.process().kill();
    run.process().waitForFinished();
    EXPECT_TRUE(contentOf(path).endsWith("operator.enter(\"0-SN\", \"4711\")\n"))
        << contentOf(path).toStdString();
}

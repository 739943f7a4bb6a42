#include "station/results/OutboxLabel.h"

#include "station/results/Results.h"

#include <QTextDocument>

#include <gtest/gtest.h>

namespace {

TEST(OutboxLabel, ShowsWhatAServerSaysAsItIs)
{
    station::Results results({}, false);
    station::OutboxLabel label(results);
    label.showText("2 answers wait", "FATAL: no <b>entry</b> & no \"line\"");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_TRUE(label.toolTip().contains("&lt;b&gt;entry&lt;/b&gt; &amp; no"))
        << label.toolTip().toStdString();
    // Entities would be seen where nothing looks like markup.
    label.showText("2 answers wait", "no 'entry' & no \"line\"");
    EXPECT_EQ(label.toolTip(), "no 'entry' & no \"line\"");
}

} // namespace

#include "tests/report/ExampleResults.h"
#include "tests/report/ReportRun.h"
#include "tests/support/Printing.h"

#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

#include <cmath>
#include <set>

using platform::Dictionary;
using testsupport::ExampleResults;

namespace {

const QString Entry = "<script>document.title = 'ran'</script>";

/// A browser without a window. Names lead nowhere, so that nothing leaves the machine; a page could still
/// reach 127.0.0.1.
class Browser
{
public:
    QByteArray dom(const QString &page) const { return run({"--dump-dom", "file://" + page}); }
    QImage picture(const QString &page, const QString &size, const QStringList &more = {}) const
    {
        const QString target = m_files.path("picture.png");
        QFile::remove(target);
        static_cast<void>(
            run(QStringList{"--hide-scrollbars", "--screenshot=" + target, "--window-size=" + size} + more +
                QStringList{"file://" + page}));
        return QImage(target).convertToFormat(QImage::Format_RGB32);
    }

private:
    QByteArray run(const QStringList &arguments) const
    {
        QProcess process;
        QEventLoop loop;
        QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
        process.start(CHROMIUM_PATH,
                      QStringList{"--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
                                  "--no-first-run", "--disable-background-networking",
                                  "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage",
                                  "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
                                  "--user-data-dir=" + m_files.path("profile")} +
                          arguments);
        loop.exec();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }

    testsupport::StationFiles m_files;
};

/// Counts who comes, and has nothing for them.
class Listener
{
public:
    Listener()
    {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            ++m_visits;
            QTcpSocket *visitor = m_server.nextPendingConnection();
            visitor->write("HTTP/1.0 404 Not Found\r\nContent-Length: 0\r\n\r\n");
            visitor->disconnectFromHost();
        });
    }
    int visits() const { return m_visits; }
    /// What a page may want to load and to run.
    QByteArray bait() const
    {
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(m_server.serverPort()) + "/";
        return "<img src=\"" + address + "a.png\"><script src=\"" + address +
               "a.js\"></script><script>document.title = 'ran'</script></body>";
    }

private:
    QTcpServer m_server;
    int m_visits = 0;
};

QRgb colour(const char *name)
{
    return QColor(name).rgb();
}

struct Stretch
{
    int at = 0;
    int length = 0;
};

/// Where a line of pixels shows the first colour and right behind it the second one: the part that the first
/// has. The pixel in which they meet may be a mixture.
template <typename PixelAt>
std::set<int> partsOfLine(int size, QRgb first, QRgb second, const PixelAt &pixelAt)
{
    std::set<int> parts;
    Stretch one;
    for (int at = 0; at < size; ++at) {
        if (pixelAt(at) != first)
            continue;
        one = {at, 0};
        while (at < size && pixelAt(at) == first)
            ++at, ++one.length;
        at += at < size && pixelAt(at) != second ? 1 : 0;
        int other = 0;
        while (at < size && pixelAt(at) == second)
            ++at, ++other;
        // In steps of five, since a bar's corners are round.
        if (one.length + other > 60 && other > 0)
            parts.insert(static_cast<int>(std::lround(20.0 * one.length / (one.length + other))) * 5);
    }
    return parts;
}

/// In percent, by lines from left to right.
std::set<int> partsAcross(const QImage &image, QRgb left, QRgb right)
{
    std::set<int> parts;
    for (int y = 0; y < image.height(); ++y)
        parts.merge(partsOfLine(image.width(), left, right, [&](int x) { return image.pixel(x, y); }));
    return parts;
}

/// In percent, by lines from top to bottom.
std::set<int> partsDown(const QImage &image, QRgb upper, QRgb lower)
{
    std::set<int> parts;
    for (int x = 0; x < image.width(); ++x)
        parts.merge(partsOfLine(image.height(), upper, lower, [&](int y) { return image.pixel(x, y); }));
    return parts;
}

qsizetype coloursOf(const QImage &image)
{
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return static_cast<qsizetype>(colours.size());
}

class BrowserTest : public ::testing::Test
{
protected:
    /// A day of four runs, three of which passed: a slot that is 75 % good, one that is 50 % and a group of
    /// both.
    BrowserTest()
    {
        ExampleResults results(m_files.path("results.sqlite"));
        for (int run = 0; run < 4; ++run) {
            results.run(QString::number(run), QStringLiteral("2026-11-20T0%1:00:00.000Z").arg(run));
            for (int round = 0; round < 2; ++round) {
                results.system(0);
                results.answers(Dictionary{{"SN", Entry}}, 1500);
                results.ends(run == 3 ? KVKLuaOutcome::Failed : KVKLuaOutcome::Passed);
            }
        }
        results.run("later", "2026-11-21T08:00:00.000Z");
        for (const KVKLuaOutcome outcome : {KVKLuaOutcome::Passed, KVKLuaOutcome::Failed}) {
            results.system(2);
            results.ends(outcome);
        }
        results.refuses("length");
        results.close();
        const testsupport::ReportRun run(
            {m_files.path("results.sqlite"), "--serial", Entry, "--html", m_files.path("page")});
        EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    }
    QString page() const { return m_files.path("page/index.html"); }

    testsupport::StationFiles m_files;
    Browser m_browser;
};

TEST_F(BrowserTest, APageHasItsSectionsAndPlotsInLightAndDarkAndRunsAndLoadsNothing)
{
    const QByteArray dom = m_browser.dom(page());
    for (const char *name :
         {"serial", "course", "groups", "slots", "histogram", "times", "slot-times", "refusals", "runs"})
        EXPECT_TRUE(dom.contains("<section id=\"" + QByteArray(name) + "\">")) << name;
    EXPECT_TRUE(dom.contains("&lt;script&gt;document.title = 'ran'&lt;/script&gt;"));
    EXPECT_TRUE(dom.contains("<title>Line 3 report</title>"));
    EXPECT_FALSE(dom.contains("<script"));

    const QImage light = m_browser.picture(page(), "1000,1800");
    ASSERT_EQ(light.size(), QSize(1000, 1800));
    EXPECT_EQ(light.pixel(2, 2), colour("#f4f6f9"));
    EXPECT_GT(coloursOf(light), 30);
    EXPECT_EQ(partsAcross(light, colour("#1f8a5f"), colour("#cf3f53")), (std::set{50, 75}));
    EXPECT_EQ(partsDown(light, colour("#cf3f53"), colour("#1f8a5f")), (std::set{25}));

    const QImage dark = m_browser.picture(page(), "1000,1800", {"--blink-settings=preferredColorScheme=0"});
    EXPECT_EQ(dark.pixel(2, 2), colour("#12161c"));
    EXPECT_GT(coloursOf(dark), 30);
    EXPECT_EQ(partsAcross(dark, colour("#3cb583"), colour("#f0707f")), (std::set{50, 75}));

    // On a phone the plots are as wide as the screen, and still true.
    const QImage phone = m_browser.picture(page(), "500,2400");
    EXPECT_EQ(partsAcross(phone, colour("#1f8a5f"), colour("#cf3f53")), (std::set{50, 75}));
}

TEST_F(BrowserTest, WhatSlipsIntoAPageNeitherRunsNorReachesTheNetwork)
{
    Listener listener;
    const QByteArray spoilt = m_files.read("page/index.html").replace("</body>", listener.bait());
    EXPECT_TRUE(m_browser.dom(m_files.write("spoilt.html", spoilt)).contains("<title>Line 3 report</title>"));
    EXPECT_EQ(listener.visits(), 0);
    // It would, without the policy.
    const QByteArray open = QByteArray(spoilt).replace("Content-Security-Policy", "Nothing");
    EXPECT_TRUE(m_browser.dom(m_files.write("open.html", open)).contains("<title>ran</title>"));
    EXPECT_GT(listener.visits(), 0);
}

} // namespace

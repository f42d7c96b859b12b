#include <QApplication>
#include <QDateTime>
#include <QTextDocument>
#include <QTextEdit>

#include <Bench.h>
#include <Rtf.h>
#include <parseNSStringStamp4strftime.h>

#include <ctime>
#include <string>

using namespace Qt::StringLiterals;

namespace {

constexpr int richTextSize = 100 * 1024;
constexpr int stampedTexts = 1'000;
constexpr int stampedTextSize = 200;

/// The same text in both notations: paragraphs with runs of several formats.
struct Notations
{
    QByteArray rtf;
    QString html;
};

Notations richText()
{
    Notations text{"{\\rtf1\\ansi{\\fonttbl\\f0 DejaVu Sans;}{\\colortbl;\\red200\\green0\\blue0;}\\f0\\fs24 ", {}};
    while (text.rtf.size() < richTextSize) {
        text.rtf += "Some plain words and \\b bold ones\\b0 , then \\i italic\\i0  and \\cf1 colored\\cf0  text to the "
                    "end.\\\n";
        text.html += u"<p style='margin:0'><span style=\"font-family:'DejaVu Sans';font-size:12pt\">Some plain words "
                     u"and <b>bold "
                     "ones</b>, then <i>italic</i> and <span style='color:#c80000'>colored</span> text to the end."
                     "</span></p>"_s;
    }
    text.rtf += '}';
    return text;
}

void richTextLoad()
{
    const Notations text = richText();
    QTextEdit ours;
    QTextEdit peer;
    const auto [oursTime, peerTime] = Bench::millisecondsInTurn(
        15, [&] { Rtf::read(text.rtf, {}, *ours.document()); }, [&] { peer.document()->setHtml(text.html); });
    Bench::report("rich_text_load", oursTime, peerTime, 1.5);
}

void stamps()
{
    // The same conversions in texts of 200 characters.
    const QString ours = u"On [[6]] at [[3]], %A %d %B: "_s.leftJustified(stampedTextSize, u'x');
    std::string peer = "On %Y-%m-%d at %H:%M, %A %d %B: ";
    peer.resize(stampedTextSize, 'x');
    const std::time_t now = std::time(nullptr);
    std::tm fields{};
    localtime_r(&now, &fields);
    // Both are given the moment: asking the clock and the time zone is no part of the measure.
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(now);
    const auto [oursTime, peerTime] = Bench::millisecondsInTurn(
        15,
        [&] {
            for (int count = 0; count < stampedTexts; ++count) {
                QString text = ours;
                parseNSStringStamp4strftime(text, moment);
            }
        },
        [&] {
            char buffer[512];
            for (int count = 0; count < stampedTexts; ++count) {
                std::strftime(buffer, sizeof buffer, peer.c_str(), &fields);
            }
        });
    Bench::report("stamps", oursTime, peerTime, 3);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    richTextLoad();
    stamps();
    return 0;
}

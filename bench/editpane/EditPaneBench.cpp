// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <core/parseNSStringStamp4strftime.h>
#include <editpane/PullDownButton.h>
#include <pane/Interface.h>
#include <phrases/BYTableView.h>
#include <platform/desktop/Bundle.h>
#include <platform/richtext/TextView.h>

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTextEdit>

#include <Bench.h>
#include <SyntheticDocument.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

using namespace Qt::StringLiterals;

namespace {

constexpr int richTextSize = 100 * 1024;
constexpr int largeTextSize = 1024 * 1024;
constexpr int phraseCount = 100'000;
constexpr int stampedTexts = 1'000;
constexpr int stampedTextSize = 200;
constexpr double frameMilliseconds = 16;

/// The same text in three notations: paragraphs with runs of several formats.
struct Notations
{
    QString plain;
    QByteArray rtf{"{\\rtf1\\ansi{\\fonttbl\\f0 DejaVu Sans;}{\\colortbl;\\red200\\green0\\blue0;}\\f0\\fs24 "};
    QString html;
};

Notations notations(qsizetype rtfSize)
{
    Notations text;
    while (text.rtf.size() < rtfSize) {
        text.plain += u"Some plain words and bold ones, then italic and colored text to the end.\n"_s;
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

/// The whole pane over a document of 100 000 phrases, the first rows of which have the texts that are measured.
class Pane final
{
public:
    enum Row { ShortText, RichText, LargeText, LargeRichText, OneLine };

    Pane()
    {
        const PropertyList::DictionaryPointer root = SyntheticDocument::root(phraseCount);
        const PropertyList::ArrayPointer phrases = root->value(DocumentKey::clippings).array();
        const auto setText = [&phrases](Row row, const QString& text, const QByteArray& rtf) {
            const PropertyList::DictionaryPointer entry = phrases->at(row).dictionary();
            entry->insert(PhraseKey::phrase, u"!%1"_s.arg(int(row)));
            entry->insert(PhraseKey::soundFilepath, text);
            if (!rtf.isEmpty()) {
                entry->insert(PhraseKey::rtfd, rtf);
            }
        };
        const Notations large = notations(largeTextSize);
        setText(ShortText, u"short"_s, {});
        setText(RichText, u"rich"_s, notations(richTextSize).rtf);
        setText(LargeText, large.plain, {});
        setText(LargeRichText, large.plain, large.rtf);
        setText(OneLine, QString(large.plain).replace(u'\n', u' '), {});

        QFile file(m_folder.filePath(u"large.blipsy"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(PropertyList::write(root)) < 0) {
            std::abort();
        }
        file.close();
        BYGlobals::storeSetting(file.fileName(), Settings::defaultFilePath.key);
        BYGlobals::storeSetting(u"10012"_s, Settings::menuBuild.key);
        Bundle::registerBundle(QStringLiteral(BLIPSY_BENCH_BUNDLE));
        m_interface = std::make_unique<Interface>();
        for (const auto& setUp : m_interface->setUps()) {
            setUp();
        }
        m_interface->selectTab(u"Phrases"_s);
        m_interface->view()->resize(860, 680);
        m_interface->view()->show();
        select(ShortText);
    }

    void select(int row)
    {
        BYGlobals::setEditEntryPaneTextIsDirty(false);
        table().selectRow_byExtendingSelection(row, false);
        showChanges();
    }

    /// Everything that waits to be laid out and painted is.
    void showChanges()
    {
        QCoreApplication::processEvents();
        m_interface->view()->repaint();
    }

    BYTableView& table() const { return *m_interface->view()->findChild<BYTableView*>(u"abbsTableView"_s); }

    TextView& text() const { return *m_interface->view()->findChild<TextView*>(u"editEntryPane"_s); }

    QMenu& dateFormats() const
    {
        const auto* button = m_interface->view()->findChild<PullDownButton*>(u"dateTimePopUpButton"_s);
        return *button->menu()->actions().constFirst()->menu();
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Interface> m_interface;
};

void selectionChange(Pane& pane)
{
    const Notations text = notations(richTextSize);
    QTextEdit peer;
    peer.resize(pane.text().size());
    peer.show();
    const auto loadPeer = [&peer](const QString& html) {
        peer.document()->setHtml(html);
        QCoreApplication::processEvents();
        peer.repaint();
    };
    const auto [ours, peerTime] = Bench::millisecondsInTurn(
        15,
        [&] {
            pane.select(Pane::ShortText);
            pane.select(Pane::RichText);
        },
        [&] {
            loadPeer(u"short"_s);
            loadPeer(text.html);
        });
    Bench::report("editpane/select-100KB-rich", ours, peerTime, 1.5);
}

/// One key from its press to the repaint, at the start, in the middle and at the end of a text.
double slowestKey(QTextEdit& view, const std::function<void()>& show)
{
    double slowest = 0;
    for (const double place : {0.0, 0.5, 1.0}) {
        QTextCursor cursor(view.document());
        cursor.setPosition(int(place * (view.document()->characterCount() - 1)));
        view.setTextCursor(cursor);
        view.ensureCursorVisible();
        show();
        const double key = Bench::milliseconds(9, [&] {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, u"x"_s);
            QCoreApplication::sendEvent(&view, &press);
            show();
        });
        slowest = std::max(slowest, key);
    }
    return slowest;
}

void typing(Pane& pane)
{
    const auto measure = [&pane](const char* name, Pane::Row row) {
        pane.select(row);
        QTextEdit peer;
        peer.resize(pane.text().size());
        peer.setPlainText(pane.text().string());
        peer.show();
        const double peerKey = slowestKey(peer, [&peer] {
            QCoreApplication::processEvents();
            peer.repaint();
        });
        const double ours = slowestKey(pane.text(), [&pane] { pane.showChanges(); });
        Bench::reportAbsolute(name, ours, peerKey, frameMilliseconds);
    };
    measure("editpane/key-1MB-plain-ms", Pane::LargeText);
    measure("editpane/key-1MB-rich-ms", Pane::LargeRichText);
    measure("editpane/key-1MB-one-line-ms", Pane::OneLine);
    pane.select(Pane::ShortText);
}

/// Until the table is repainted, with the edit pane following; the sort and the write, which come back from the bus,
/// are left out.
void rows(Pane& pane)
{
    BYTableView& table = pane.table();
    pane.select(phraseCount / 2);
    const double removal = Bench::milliseconds(7, [&] {
        gConfirmRemove = false;
        table.removeRow(nullptr);
        table.viewport()->repaint();
    });
    Bench::reportAbsolute("editpane/remove-row-ms", removal, 0, frameMilliseconds);

    double addition = std::numeric_limits<double>::max();
    for (int round = 0; round < 7; ++round) {
        pane.select(phraseCount / 2);
        // The last round's edited cell may not have been heard of yet.
        editEntryInProgress = false;
        addition = std::min(addition, Bench::milliseconds(1, [&table] {
            table.addRow(nullptr);
            // What the table does when it hears of its row; without a sorted column this sorts nothing.
            table.tableView_sortDescriptorsDidChange(&table);
            table.scrollToAbb(u"my new phrase"_s);
            table.editColumn_row_withEvent_select(1, table.selectedRow(), nullptr, true);
            table.viewport()->repaint();
        }));
    }
    Bench::reportAbsolute("editpane/add-row-ms", addition, 0, frameMilliseconds);
}

void phraseMenu(Pane& pane)
{
    QMenu& menu = *pane.dateFormats().actions().at(5)->menu();
    const double opening = Bench::milliseconds(1, [&] {
        menu.popup({});
        QCoreApplication::processEvents();
        menu.repaint();
    });
    menu.close();
    Bench::reportAbsolute("editpane/phrase-menu-of-100000-ms", opening, 0, 100);
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
            std::array<char, 512> buffer{};
            for (int count = 0; count < stampedTexts; ++count) {
                std::strftime(buffer.data(), buffer.size(), peer.c_str(), &fields);
            }
        });
    Bench::report("stamps", oursTime, peerTime, 3);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    stamps();
    Pane pane;
    selectionChange(pane);
    typing(pane);
    phraseMenu(pane);
    rows(pane);
    return 0;
}

// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <core/SoundsDocument.h>
#include <pane/Interface.h>
#include <platform/desktop/Bundle.h>
#include <platform/storage/AtomicFile.h>

#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>

#include <Bench.h>
#include <SyntheticDocument.h>

#include <algorithm>
#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 9;
constexpr int tabSwitches = 9;
constexpr int phraseCount = 100'000;

/// Tells when the window has been painted for the first time, and ends the program.
class FirstPaint final : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QMetaObject::invokeMethod(
                qApp,
                [] {
                    std::puts("painted");
                    std::fflush(stdout);
                    std::_Exit(0);
                },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }
};

int show(QWidget* content)
{
    FirstPaint firstPaint;
    QMainWindow window;
    window.setCentralWidget(content);
    window.resize(860, 680);
    window.installEventFilter(&firstPaint);
    window.show();
    QCoreApplication::exec();
    window.takeCentralWidget()->setParent(nullptr);
    return 0;
}

/// The pane on @p document, or on the default document, set up as the bundle's principal class does it.
std::unique_ptr<Interface> setUpInterface(const QString& document = {})
{
    Bundle::registerBundle(QStringLiteral(BLIPSY_BENCH_BUNDLE));
    Settings::menuBuild.store(10012);
    Settings::defaultFilePath.store(document);
    SoundsDocument::shared().readAhead(document);
    auto interface = std::make_unique<Interface>();
    for (const auto& setUp : interface->setUps()) {
        setUp();
    }
    return interface;
}

/// As the program that is measured: "bare", "pane" on the default document, or "pane" on the @p document.
int runAs(const QString& role, const QString& document)
{
    if (role == u"pane"_s) {
        const auto interface = setUpInterface(document);
        return show(interface->view());
    }
    QTableView table;
    return show(&table);
}

/// From the start of a program to its first paint, in ms. Its end, when a large document is given back, is left out.
double startMilliseconds(const QString& program, const QStringList& arguments)
{
    QProcess process;
    const double elapsed = Bench::milliseconds(1, [&] {
        process.start(program, arguments);
        process.waitForReadyRead(-1);
    });
    process.waitForFinished(-1);
    return elapsed;
}

/// The best of several starts in turn: {ours, peer}.
std::pair<double, double> startsInTurn(const QString& program, const QStringList& ours, const QStringList& peer)
{
    std::pair best(startMilliseconds(program, ours), startMilliseconds(program, peer));
    for (int round = 1; round < rounds; ++round) {
        best.first = std::min(best.first, startMilliseconds(program, ours));
        best.second = std::min(best.second, startMilliseconds(program, peer));
    }
    return best;
}

void benchStart(const QString& program)
{
    const auto [ours, peer] = startsInTurn(program, {u"pane"_s}, {u"bare"_s});
    Bench::report("pane/start-to-first-paint-ms", ours, peer, 2.5);
}

void benchLargeStart(const QString& program, const QString& document)
{
    if (const auto written = AtomicFile::write(document, PropertyList::write(SyntheticDocument::root(phraseCount)));
        !written) {
        std::fprintf(stderr, "%s\n", qPrintable(written.error()));
        return;
    }
    const auto [large, usual] = startsInTurn(program, {u"pane"_s, document}, {u"pane"_s});
    Bench::report("pane/start-with-100000-phrases-ms", large, usual, 3);
}

void benchOptionsTab()
{
    const auto interface = setUpInterface();
    QWidget* view = interface->view();
    view->resize(860, 680);
    view->show();
    QCoreApplication::processEvents();
    const auto switchTo = [&](const QString& tab) {
        interface->selectTab(tab);
        QCoreApplication::processEvents();
        view->repaint();
    };
    const double first = Bench::milliseconds(1, [&] { switchTo(u"Options"_s); });
    switchTo(u"Phrases"_s);
    double again = 0;
    for (int i = 0; i < tabSwitches; ++i) {
        again = Bench::milliseconds(1, [&] { switchTo(u"Options"_s); });
        switchTo(u"Phrases"_s);
    }
    Bench::reportAbsolute("pane/options-tab-first-time-more-ms", first - again, again, 50);
}

} // namespace

/// Measures; with the argument "pane" or "bare" it is the program that is measured.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    if (argc < 2) {
        qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    }
    QApplication application(argc, argv);
    if (argc > 1) {
        const QStringList arguments = QCoreApplication::arguments();
        return runAs(arguments[1], arguments.value(2));
    }
    benchStart(QCoreApplication::applicationFilePath());
    benchLargeStart(QCoreApplication::applicationFilePath(), home.filePath(u"Large.plist"_s));
    benchOptionsTab();
    return 0;
}

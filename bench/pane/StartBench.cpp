// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <pane/Interface.h>
#include <platform/desktop/Bundle.h>

#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>

#include <Bench.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 9;
constexpr int tabSwitches = 9;

/// Ends the program when the window has been painted for the first time.
class FirstPaint final : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
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

std::unique_ptr<Interface> setUpInterface()
{
    Bundle::registerBundle(QStringLiteral(BLIPSY_BENCH_BUNDLE));
    BYGlobals::storeSetting(u"10012"_s, Settings::menuBuild.key);
    auto interface = std::make_unique<Interface>();
    for (const auto& setUp : interface->setUps()) {
        setUp();
    }
    return interface;
}

int runAs(const QString& role)
{
    if (role == u"pane"_s) {
        const auto interface = setUpInterface();
        return show(interface->view());
    }
    QTableView table;
    return show(&table);
}

void benchStart(const QString& program)
{
    const auto [ours, peer] = Bench::millisecondsInTurn(
        rounds, [&] { QProcess::execute(program, {u"pane"_s}); }, [&] { QProcess::execute(program, {u"bare"_s}); });
    Bench::report("pane/start-to-first-paint-ms", ours, peer, 2.5);
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
        return runAs(QString::fromLocal8Bit(argv[1]));
    }
    benchStart(QCoreApplication::applicationFilePath());
    benchOptionsTab();
    return 0;
}

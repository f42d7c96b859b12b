// SPDX-License-Identifier: MIT
#include "BundleLocator.h"
#include "CommandLine.h"
#include "SessionBus.h"
#include "SettingsWindow.h"
#include "SingleInstance.h"
#include "Toolkit.h"

#include <pane/interface/PreferencePane.h>

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QTextStream>
#include <QTimer>
#include <QTranslator>

#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

int fail(const QString& message)
{
    QTextStream(stderr) << "blipsy-settings: " << message << Qt::endl;
    return EXIT_FAILURE;
}

/// Why the pane has no tab of that name; nothing when it has, or for an empty name.
std::optional<QString> problemWithTab(const PreferencePane& pane, const QString& name)
{
    const QStringList names = pane.tabNames();
    if (name.isEmpty() || names.contains(name)) {
        return std::nullopt;
    }
    return u"there is no tab \"%1\"; the tabs are %2"_s.arg(name, names.join(u", "_s));
}

int savePictures(SettingsWindow& window, const QString& folder)
{
    int result = EXIT_SUCCESS;
    // Only when the first events have been handled does the window have its final layout.
    QTimer::singleShot(0, &window, [&window, &folder, &result] {
        if (!window.saveScreenshots(folder)) {
            result = fail(u"cannot save pictures in %1"_s.arg(folder));
        }
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    return result;
}

int showPane(PreferencePane& pane, const CommandLine::Options& options, SingleInstance& instance)
{
    if (const std::optional<QString> problem = problemWithTab(pane, options.tab)) {
        return fail(*problem);
    }
    if (!options.screenshotFolder.isEmpty()) {
        pane.setPictured();
    }
    if (!options.document.isEmpty()) {
        pane.openDocument(options.document);
    }
    SettingsWindow window(pane);
    if (!options.tab.isEmpty()) {
        pane.selectTab(options.tab);
    }
    instance.serve([&pane, &window](const SingleInstance::Request& request) {
        const std::optional<QString> problem = problemWithTab(pane, request.tab);
        if (!problem) {
            window.present(request.document, request.tab, request.activationToken);
        }
        return problem;
    });
    window.show();
    return options.screenshotFolder.isEmpty() ? QCoreApplication::exec()
                                              : savePictures(window, options.screenshotFolder);
}

/// Loads the pane from its bundle at @p bundle, and has @p use answer the program's exit status.
int loadPane(const QString& bundle, const std::function<int(PreferencePane&)>& use)
{
    if (bundle.isEmpty()) {
        return fail(u"the settings pane is not installed"_s);
    }
    QPluginLoader loader(bundle + u"/Contents/MacOS/BlipsyPref.so"_s);
    // Libraries that the pane uses keep threads to the end of the process: their code has to stay.
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    auto* pane = qobject_cast<PreferencePane*>(loader.instance());
    if (pane == nullptr) {
        return fail(u"the settings pane cannot be loaded: %1"_s.arg(loader.errorString()));
    }
    pane->setBundlePath(bundle);
    const int result = use(*pane);
    loader.unload();
    return result;
}

/// Formatted text is read by parts of the toolkit that want one of its applications, though nothing is shown.
int carryOut(const DocumentTask& task, int& argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return loadPane(BundleLocator::originalPath(), [&task](PreferencePane& pane) { return pane.carryOut(task); });
}

/// What needs no display, and what has to be done before the toolkit looks for one.
struct Preparation
{
    std::optional<DocumentTask> task = {};
    /// Whether there is a session bus that answers.
    bool hasBus = false;
};

Preparation prepare(int& argc, char** argv)
{
    const QCoreApplication console(argc, argv);
    CommandLine::answerQuestions(console);
    if (auto task = CommandLine::task()) {
        return {.task = std::move(task)};
    }
    const SessionBus::State bus = SessionBus::state();
    if (bus == SessionBus::State::Hung) {
        qWarning("the session bus does not answer: going on without it");
        SessionBus::hideFromToolkit();
    }
    return {.hasBus = bus == SessionBus::State::Answering};
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(u"blipsy"_s);
    QCoreApplication::setApplicationName(u"blipsy-settings"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(BLIPSY_VERSION));
    QGuiApplication::setDesktopFileName(u"com.blipsy.Settings"_s);
    // The toolkit takes it out of the environment.
    const QString activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");

    const Preparation preparation = prepare(argc, argv);
    if (preparation.task) {
        return carryOut(*preparation.task, argc, argv);
    }
    const std::unique_ptr<QApplication> application = Toolkit::start(argc, argv);
    QGuiApplication::setWindowIcon(QIcon::fromTheme(u"com.blipsy.Settings"_s));

    // The pane brings its own texts; these are those of the toolkit's file and print dialogs.
    QTranslator toolkitTexts;
    if (toolkitTexts.load(QLocale(), u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&toolkitTexts);
    }

    const CommandLine::Options options = CommandLine::parse(*application);
    SingleInstance instance(preparation.hasBus);
    // Pictures can be taken beside a running pane: nothing is changed on the way.
    if (options.screenshotFolder.isEmpty() && !instance.claim()) {
        const std::optional<QString> problem = instance.handOver({options.document, options.tab, activationToken});
        if (!problem) {
            return EXIT_SUCCESS;
        }
        // The other one may have ended in between.
        if (!instance.claim()) {
            return fail(u"another one runs in this session: %1"_s.arg(*problem));
        }
    }
    return loadPane(BundleLocator::bundlePath(),
        [&options, &instance](PreferencePane& pane) { return showPane(pane, options, instance); });
}

#include "BundleLocator.h"
#include "SettingsWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QTextStream>
#include <QTimer>
#include <QTranslator>

#include <PreferencePane.h>

using namespace Qt::StringLiterals;

namespace {

struct Options
{
    QString document;
    QString screenshotFolder;
    QString tab;
};

Options parseOptions(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Settings of Blipsy, which plays short sounds when you type a phrase and when something happens on the desktop."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption document(u"document"_s, u"Use the sounds document FILE."_s, u"FILE"_s);
    const QCommandLineOption screenshot(u"screenshot"_s, u"Save a picture of every tab in DIR and exit."_s, u"DIR"_s);
    const QCommandLineOption tab(
        u"tab"_s, u"Show the tab NAME: Phrases, Events, Applications or Options."_s, u"NAME"_s);
    parser.addOptions({document, screenshot, tab});
    parser.process(application);
    return {parser.value(document), parser.value(screenshot), parser.value(tab)};
}

int fail(const QString& message)
{
    QTextStream(stderr) << "blipsy-settings: " << message << Qt::endl;
    return EXIT_FAILURE;
}

int showPane(PreferencePane& pane, const Options& options)
{
    if (!options.document.isEmpty()) {
        pane.openDocument(QFileInfo(options.document).absoluteFilePath());
    }
    SettingsWindow window(pane);
    if (!options.tab.isEmpty() && !pane.selectTab(options.tab)) {
        return fail(u"there is no tab \"%1\"; the tabs are %2"_s.arg(options.tab, pane.tabNames().join(u", "_s)));
    }
    window.show();
    if (options.screenshotFolder.isEmpty()) {
        return QCoreApplication::exec();
    }
    int result = EXIT_SUCCESS;
    // Only when the first events have been handled does the window have its final layout.
    QTimer::singleShot(0, &window, [&window, &options, &result] {
        if (!window.saveScreenshots(options.screenshotFolder)) {
            result = fail(u"cannot save pictures in %1"_s.arg(options.screenshotFolder));
        }
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"blipsy"_s);
    QCoreApplication::setApplicationName(u"blipsy-settings"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(BLIPSY_VERSION));
    QGuiApplication::setDesktopFileName(u"com.blipsy.Settings"_s);
    QGuiApplication::setWindowIcon(QIcon::fromTheme(u"com.blipsy.Settings"_s));

    // The pane brings its own texts; these are those of the toolkit's file and print dialogs.
    QTranslator toolkitTexts;
    if (toolkitTexts.load(QLocale(), u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&toolkitTexts);
    }

    const Options options = parseOptions(application);
    const QString bundle = BundleLocator::bundlePath();
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
    const int result = showPane(*pane, options);
    loader.unload();
    return result;
}

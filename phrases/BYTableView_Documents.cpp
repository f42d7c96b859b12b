// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include "FormattedText.h"
#include "PrintClippingsWindow.h"
#include "RecentDocuments.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/classic/FileTypes.h>
#include <platform/panels/OpenPanel.h>
#include <platform/panels/SavePanel.h>
#include <platform/storage/AtomicFile.h>

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QProgressDialog>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

using Importers::Conversion;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.documents")

/// Documents are named by the user, whatever extension was typed, and this.
const QLatin1StringView documentSuffix(".Blipsy");

/// The user is asked once a conversion has taken this long.
constexpr int progressDelayMilliseconds = 500;
constexpr qsizetype itemsPerProgressStep = 64;
constexpr qint64 maximumSourceSize = 1 << 30;

/// The path at which a document is to be written; nothing when the user cancels.
std::optional<QString> chooseNewPath(
    QWidget* window, const QString& title, const QString& directory, const QString& name)
{
    SavePanel panel(window);
    panel.setTitle(title);
    panel.setAppendedSuffix(documentSuffix);
    if (panel.runModalForDirectory_file(directory, name) != okButton) {
        return std::nullopt;
    }
    return panel.filename() + documentSuffix;
}

void writeNewDocument(const PropertyList::DictionaryPointer& document, const QString& path)
{
    if (const std::optional<QString> error = AtomicFile::write(path, PropertyList::write(document))) {
        qCWarning(log).noquote() << *error;
    }
}

void reportImportProblem(const QString& path, const QString& problem)
{
    qCWarning(log).noquote() << u"cannot import %1: %2"_s.arg(path, problem);
}

QStringList importableTypes()
{
    return {u"Blipsy"_s, u"plist"_s, u"xml"_s, u"textpander"_s, u"textexpander"_s,
        FileTypes::fileTypeForHFSTypeCode(FileTypes::typeCode("XPND"))};
}

} // namespace

void BYTableView::openDoc(QObject*)
{
    const QComboBox* popUp = defaultClippingsFileNSPopUpButton;
    if (!popUp) {
        return;
    }
    const int fromTheEnd = popUp->count() - popUp->currentIndex();
    if (fromTheEnd == 1) {
        createDocument();
    } else if (fromTheEnd == 2) {
        openFile();
    } else if (fromTheEnd == 3) {
        showPrintClippingsWindow(this);
    } else {
        const QString path = popUp->currentData(Qt::ToolTipRole).toString();
        if (QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier)) {
            forgetDocument(path);
            return;
        }
        leaveDocument();
        BYGlobals::setDefaultFilePath(path);
    }
    finishDocumentCommand();
}

void BYTableView::useDocument(const QString& path)
{
    leaveDocument();
    BYGlobals::setDefaultFilePath(path);
    finishDocumentCommand();
}

// Text that is not saved belongs to the document that is about to go.
void BYTableView::leaveDocument()
{
    askAboutUnsavedText();
    setEditPaneDirty(false);
}

void BYTableView::createDocument()
{
    const RowHold hold(*this);
    const std::optional<QString> path =
        chooseNewPath(window(), localized(u"New Sounds Document"_s), QDir::homePath(), localized(u"new sound set"_s));
    if (!path) {
        return;
    }
    leaveDocument();
    BYGlobals::setDefaultFilePath(*path);
    BYGlobals::storeSetting(*path, SettingKey::defaultFilePath);
    writeNewDocument(Importers::newSoundsDocument(), *path);
}

void BYTableView::openFile()
{
    const RowHold hold(*this);
    OpenPanel panel(window());
    panel.setTitle(localized(u"Open a Sounds Document or Import Phrases"_s));
    panel.setAllowsMultipleSelection(false);
    if (panel.runModalForDirectory_file_types(QDir::homePath(), {}, importableTypes()) != okButton) {
        return;
    }
    for (const QString& path : panel.filenames()) {
        if (!QFileInfo::exists(path)) {
            qCWarning(log).noquote() << u"Path (%1) is invalid."_s.arg(path);
        }
        if (const std::optional<Importers::Source> source = Importers::sourceOf(path)) {
            importFile(path, *source);
        } else {
            leaveDocument();
            BYGlobals::setDefaultFilePath(path);
        }
    }
}

void BYTableView::importFile(const QString& path, Importers::Source source)
{
    const std::optional<QString> newPath = chooseNewPath(window(), localized(u"Save the Imported Phrases"_s),
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), QFileInfo(path).completeBaseName());
    if (!newPath) {
        qCInfo(log).noquote() << Importers::cancelledText(source);
        return;
    }
    const Conversion conversion = convertShowingProgress(path, source);
    if (conversion.outcome == Conversion::Outcome::Cancelled) {
        qCInfo(log).noquote() << u"user cancelled the import of %1"_s.arg(path);
        return;
    }
    for (auto trouble = conversion.troubles.cbegin(); trouble != conversion.troubles.cend(); ++trouble) {
        qCWarning(log).noquote() << u"%1: %2 (%3 items)"_s.arg(path, trouble.key()).arg(trouble.value());
    }
    leaveDocument();
    BYGlobals::setDefaultFilePath(*newPath);
    if (conversion.outcome == Conversion::Outcome::Converted) {
        BYGlobals::storeSetting(*newPath, SettingKey::defaultFilePath);
        writeNewDocument(conversion.document, *newPath);
    }
}

Conversion BYTableView::convertShowingProgress(const QString& path, Importers::Source source)
{
    const auto root = PropertyList::readFile(path, maximumSourceSize);
    if (!root) {
        reportImportProblem(path, root.error());
        return {.outcome = Conversion::Outcome::NoList};
    }
    QProgressDialog progress(localized(u"Importing phrases…"_s), localized(u"Cancel"_s), 0, 0, window());
    progress.setWindowTitle(localized(u"Blipsy"_s));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(progressDelayMilliseconds);
    Conversion conversion =
        Importers::convert(*root, source, FormattedText::converters(), [&progress](qsizetype done, qsizetype total) {
            if (done % itemsPerProgressStep == 0) {
                progress.setMaximum(int(total));
                progress.setValue(int(done));
            }
            return !progress.wasCanceled();
        });
    if (conversion.outcome == Conversion::Outcome::NoList) {
        reportImportProblem(path, u"it holds no list of phrases"_s);
    }
    return conversion;
}

// The document in use stays on the list, and the file where it is.
void BYTableView::forgetDocument(const QString& path)
{
    if (path != BYGlobals::defaultFilePath()) {
        RecentDocuments::remove(path);
    }
    updateClippingsPopUpButton();
    updateVolumeSlider();
}

void BYTableView::finishDocumentCommand()
{
    const QString path = BYGlobals::defaultFilePath();
    BYGlobals::storeSetting(path, SettingKey::defaultFilePath);
    BYGlobals::sendNotification(NotificationName::preferencesChanged);
    RecentDocuments::add(path);
    reloadDocument();
    updateClippingsPopUpButton();
    updateVolumeSlider();
}

void BYTableView::showPrintClippingsWindow(QObject*)
{
    if (printClippingsWindow) {
        printClippingsWindow->present();
    }
}

// SPDX-License-Identifier: MIT
#include "DocumentCommands.h"

#include "RecentDocuments.h"

#include <core/BYGlobals.h>
#include <core/Changes.h>
#include <core/DocumentBackups.h>
#include <core/SharedNames.h>
#include <documents/FormattedText.h>
#include <documents/NewDocument.h>
#include <platform/classic/FileTypes.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/Text.h>
#include <platform/panels/Alert.h>
#include <platform/panels/OpenPanel.h>
#include <platform/panels/SavePanel.h>
#include <platform/storage/AtomicFile.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QProgressDialog>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

using Importers::Conversion;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.documents")

/// Documents are named by the user, whatever extension was typed, and this.
const QLatin1StringView documentSuffix(".Blipsy");

/// What an item of the pop-up is, under itemRole. A document's path is its tool tip.
enum Item { Document = 1, Print, Open, Create };

constexpr int itemRole = Qt::UserRole;

/// The user is asked once a conversion has taken this long.
constexpr int progressDelayMilliseconds = 500;
constexpr qsizetype itemsPerProgressStep = 64;

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
    if (const auto written = NewDocument::write(document, path); !written) {
        qCWarning(log).noquote() << written.error();
    }
}

void reportImportProblem(const QString& path, const QString& problem)
{
    qCWarning(log).noquote() << u"cannot import %1: %2"_s.arg(path, problem);
}

QStringList importableTypes()
{
    return {u"Blipsy"_s, u"plist"_s, u"xml"_s, u"textpander"_s, u"textexpander"_s,
        FileTypes::fileTypeForHFSTypeCode(fourCharCode("XPND"))};
}

} // namespace

DocumentCommands::DocumentCommands(QComboBox* popUp, QObject* parent)
    : QObject(parent)
    , m_popUp(popUp)
{
    if (m_popUp) {
        m_popUp->insertSeparator(m_popUp->count());
        const auto add = [this](const QString& title, Item item) {
            m_popUp->addItem(title);
            m_popUp->setItemData(m_popUp->count() - 1, item, itemRole);
        };
        add(Text::tr("Print…"), Print);
        add(Text::tr("Open…"), Open);
        add(Text::tr("New sounds document…"), Create);
    }
}

void DocumentCommands::updatePopUp()
{
    if (!m_popUp) {
        return;
    }
    const QString current = Settings::defaultFilePath.value();
    int selected = 0;
    if (std::optional<QStringList> paths = Settings::recentFiles.value()) {
        while (m_popUp->itemData(0, itemRole) == Document) {
            m_popUp->removeItem(0);
        }
        paths->removeIf([](const QString& path) { return !QFileInfo::exists(path); });
        selected = addRecentDocuments(*paths, current);
        Settings::recentFiles.store(paths);
    }
    m_popUp->setCurrentIndex(selected);
    m_popUp->setToolTip(current);
}

// Newest first. Answers the item of the current document, or 0.
int DocumentCommands::addRecentDocuments(const QStringList& paths, const QString& current)
{
    int selected = 0;
    int item = 0;
    for (auto path = paths.crbegin(); path != paths.crend(); ++path, ++item) {
        m_popUp->insertItem(item, QFileInfo(*path).completeBaseName());
        m_popUp->setItemData(item, Document, itemRole);
        m_popUp->setItemData(item, *path, Qt::ToolTipRole);
        if (*path == current) {
            selected = item;
        }
    }
    return selected;
}

void DocumentCommands::carryOutChosenItem()
{
    if (!m_popUp) {
        return;
    }
    switch (m_popUp->currentData(itemRole).toInt()) {
    case Create:
        create();
        break;
    case Open:
        open();
        break;
    case Print:
        Q_EMIT printRequested();
        break;
    default:
        const QString path = m_popUp->currentData(Qt::ToolTipRole).toString();
        if (QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier)) {
            forget(path);
            return;
        }
        leaveFor(path);
    }
    finish();
}

void DocumentCommands::use(const QString& path)
{
    leaveFor(path);
    finish();
}

void DocumentCommands::useDefaultOnFirstStart()
{
    if (!BYGlobals::defaultFilePath().isEmpty()) {
        return;
    }
    const QString path = Bundle::resourcePath() + u"/default.blipsy"_s;
    BYGlobals::setDefaultFilePath(path);
    Settings::defaultFilePath.store(path);
    RecentDocuments::add(path);
}

// The document in use stays on the list, and the file where it is.
void DocumentCommands::forget(const QString& path)
{
    if (path != BYGlobals::defaultFilePath()) {
        RecentDocuments::remove(path);
    }
    updatePopUp();
}

void DocumentCommands::create()
{
    const std::optional<QString> path =
        chooseNewPath(window(), Text::tr("New Sounds Document"), QDir::homePath(), Text::tr("new sound set"));
    if (!path) {
        return;
    }
    leaveFor(*path);
    Settings::defaultFilePath.store(*path);
    writeNewDocument(Importers::newSoundsDocument(), *path);
}

void DocumentCommands::open()
{
    OpenPanel panel(window());
    panel.setTitle(Text::tr("Open a Sounds Document or Import Phrases"));
    panel.setAllowsMultipleSelection(false);
    panel.setPlace(DocumentBackups::folder());
    if (panel.runModalForDirectory_file_types(QDir::homePath(), {}, importableTypes()) != okButton) {
        return;
    }
    for (const QString& path : panel.filenames()) {
        if (!QFileInfo::exists(path)) {
            qCWarning(log).noquote() << u"Path (%1) is invalid."_s.arg(path);
        }
        if (DocumentBackups::contains(path)) {
            goBackTo(path);
        } else if (const std::optional<Importers::Source> source = Importers::sourceOf(path)) {
            import(path, *source);
        } else {
            leaveFor(path);
        }
    }
}

// The backup itself stays what it is.
void DocumentCommands::goBackTo(const QString& backup)
{
    const std::optional<QString> path = choosePathFor(backup);
    if (!path) {
        return;
    }
    leaveFor(*path);
    QFile source(backup);
    if (!source.open(QIODevice::ReadOnly)) {
        qCWarning(log).noquote() << u"cannot read %1: %2"_s.arg(backup, source.errorString());
    } else if (NewDocument::keepReplaced(*path)) {
        if (const auto copied = AtomicFile::copy(source, *path); !copied) {
            qCWarning(log).noquote() << copied.error();
        }
    }
}

// The document that the backup is of, where the user knows it and agrees; nothing when the user cancels.
std::optional<QString> DocumentCommands::choosePathFor(const QString& backup) const
{
    const QStringList recent = Settings::recentFiles.value().value_or(QStringList());
    const QString path = DocumentBackups::documentAmong(QStringList{BYGlobals::defaultFilePath()} + recent, backup);
    if (path.isEmpty()) {
        return chooseNewPath(window(), Text::tr("Save the Backup As"),
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), DocumentBackups::documentName(backup));
    }
    const QString moment = QLocale().toString(DocumentBackups::moment(backup).toLocalTime(), QLocale::ShortFormat);
    const bool isAgreed = Alert::runAlertPanel(window(),
                              Text::tr("Go back to “%1” of %2?").arg(QFileInfo(path).completeBaseName(), moment),
                              Text::tr("What the document is now is kept as a backup, too."), Text::tr("Go Back"),
                              Text::tr("Cancel")) == Alert::defaultReturn;
    return isAgreed ? std::optional(path) : std::nullopt;
}

void DocumentCommands::import(const QString& path, Importers::Source source)
{
    const std::optional<QString> newPath = chooseNewPath(window(), Text::tr("Save the Imported Phrases"),
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
    leaveFor(*newPath);
    if (conversion.outcome == Conversion::Outcome::Converted) {
        Settings::defaultFilePath.store(*newPath);
        writeNewDocument(conversion.document, *newPath);
    }
}

Conversion DocumentCommands::convertShowingProgress(const QString& path, Importers::Source source) const
{
    const auto root = PropertyList::readFile(path, Importers::maximumSourceSize);
    if (!root) {
        reportImportProblem(path, root.error());
        return {.outcome = Conversion::Outcome::NoList};
    }
    QProgressDialog progress(Text::tr("Importing phrases…"), Text::tr("Cancel"), 0, 0, window());
    progress.setWindowTitle(Text::tr("Blipsy"));
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

void DocumentCommands::leaveFor(const QString& path)
{
    Q_EMIT leaving();
    // What is written to the path from now on is not overwritten by what was changed before.
    SoundsDocument::shared().finishSaving();
    BYGlobals::setDefaultFilePath(path);
}

void DocumentCommands::finish()
{
    const QString path = BYGlobals::defaultFilePath();
    Settings::defaultFilePath.store(path);
    Changes::tell(NotificationName::preferencesChanged);
    RecentDocuments::add(path);
    Q_EMIT chosen();
    updatePopUp();
}

QWidget* DocumentCommands::window() const
{
    return m_popUp ? m_popUp->window() : nullptr;
}

// SPDX-License-Identifier: MIT
#pragma once

#include <documents/Importers.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

class QComboBox;
class QWidget;

/// The commands of the documents pop-up: documents used lately, and items that print, open or import, and create.
///
/// Whatever is carried out, the document in use is then the one of BYGlobals::defaultFilePath(), stored in the settings
/// and on the list of recent documents.
class DocumentCommands final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DocumentCommands)

public:
    /// Adds the items of the commands to @p popUp, below those of the documents. A null pop-up is left out. Its window
    /// is that of the panels.
    explicit DocumentCommands(QComboBox* popUp, QObject* parent = nullptr);

    /// Rebuilds the pop-up from the recent documents, the newest first; those whose files have gone are forgotten.
    void updatePopUp();

    /// Carries out the item that the user has chosen.
    void carryOutChosenItem();
    /// Makes the document at @p path the one in use.
    void use(const QString& path);

    /// Where the settings name no document, as on the first start, they then name the default one.
    static void useDefaultOnFirstStart();

Q_SIGNALS:
    /// The document in use is about to become another: text that is not saved belongs to the one that goes.
    void leaving();
    /// The document in use is to be read, again or for the first time.
    void chosen();
    /// The print window is asked for.
    void printRequested();

private:
    void forget(const QString& path);
    void create();
    void open();
    void goBackTo(const QString& backup);
    std::optional<QString> choosePathFor(const QString& backup) const;
    void import(const QString& path, Importers::Source source);
    Importers::Conversion convertShowingProgress(const QString& path, Importers::Source source) const;
    void leaveFor(const QString& path);
    void finish();
    int addRecentDocuments(const QStringList& paths, const QString& current);
    QWidget* window() const;

    QComboBox* m_popUp;
};

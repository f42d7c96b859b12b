// SPDX-License-Identifier: MIT
#pragma once

#include "PanelTypes.h"

#include <QFileDialog>
#include <QPointer>
#include <QUrl>

class QItemSelectionModel;

/// Hides the choice of file types of a file dialog, and the column of kinds: in panels the types are the caller's.
void hideTypes(QFileDialog& dialog);

/// The file browser of an OpenPanel. Chooses files, or folders, or both; a folder is entered by a double click.
class FilePanel final : public QFileDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FilePanel)

public:
    FilePanel(const PanelRules& rules, QWidget* parent);
    /// Gives the accessory view back, and forgets the place that was added.
    ~FilePanel() override;

    /// Puts @p view below the file list for as long as the panel exists.
    void setAccessoryView(QWidget* view);
    /// Offers @p folder among the user's places for as long as the panel exists.
    void addPlace(const QString& folder);
    /// The paths selected in the list now.
    QStringList selection() const;

    void accept() override;

Q_SIGNALS:
    void selectionDidChange();

private:
    bool canChoose(const QString& path) const;
    bool areChoosable(const QStringList& paths) const;
    void enableOpenButton();
    QItemSelectionModel* listSelection() const;

    PanelRules m_rules;
    QUrl m_place;
    QPointer<QWidget> m_accessory;
    QPointer<QWidget> m_accessoryParent;
};

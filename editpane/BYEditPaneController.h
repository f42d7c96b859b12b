// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>

class EditSession;
class Matrix;
class PhraseReferences;
class PullDownButton;
class QAbstractButton;
class QAction;
class QDialog;
class QMenu;
class TableView;
class TextView;

/// The controller of the pane below the phrase table: it inserts dates, markers and references to other phrases,
/// switches between plain and rich text, and has the session save the text.
class BYEditPaneController final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BYEditPaneController)

public:
    /// @p session belongs to the pane and outlives the controller.
    explicit BYEditPaneController(EditSession& session, QObject* parent = nullptr);

    /// @name Outlets
    /// Set before awakeFromNib(); owned by the window. The two menus are made here where they are not set. Any other
    /// outlet that is null is left out.
    /// @{
    TableView* abbsTableView = nullptr;
    PullDownButton* dateTimePopUpButton = nullptr;
    PullDownButton* textFormattingPopUpButton = nullptr;
    QAbstractButton* saveEditedAbbButton = nullptr;
    QMenu* dateFormats = nullptr;
    QMenu* textFormats = nullptr;
    TextView* editPane = nullptr;
    Matrix* plainOrRichRadioButton = nullptr;
    /// @}

    /// Fills the menus with today's date and the document's phrases, as both are now.
    void awakeFromNib();

    /// @name Actions
    /// @{
    void saveEditedAbb(QObject* sender);
    void plainOrRich(Matrix* sender);
    void enterDateTimeSyntax(QAction* sender);
    void clippingMenuItemSelected(QAction* sender);
    /// @}

    /// The sheet of plainOrRich() has been answered: 1000 for its first button.
    void alertDidEnd_returnCode_contextInfo(QDialog* alert, int returnCode, void* contextInfo);

private:
    void titleFormats(const QMenu& menu) const;
    void fillReferences(QMenu& menu);
    QAction* makeReferenceItem(int row, QObject* parent) const;
    void addReferenceList(QMenu& menu);
    void connectMenus();
    void connectItems(const QMenu& menu);
    void insert(const QString& text);
    void showPlainAttributes();
    void makePlain();
    void makeRich();

    EditSession& m_session;
    QDateTime m_setUp;
    PhraseReferences* m_references = nullptr;
};

// SPDX-License-Identifier: MIT
#include "BYEditPaneController.h"

#include "EditPaneMenus.h"
#include "PhraseReferences.h"
#include "PlainToolTip.h"
#include "PullDownButton.h"

#include <core/BYGlobals.h>
#include <core/Changes.h>
#include <core/Phrase.h>
#include <core/parseNSStringStamp4strftime.h>
#include <platform/controls/Matrix.h>
#include <platform/desktop/Text.h>
#include <platform/panels/Alert.h>
#include <platform/richtext/RtfTables.h>
#include <platform/richtext/TextView.h>
#include <platform/storage/Preferences.h>
#include <platform/table/TableView.h>
#include <texts/EditSession.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFontInfo>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QWidgetAction>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t referenceMarker = u'\u270D';
constexpr int richTag = 1;
constexpr int lastFormatTag = 999;
constexpr int firstMarkerTag = 1000;
constexpr int firstSymbolTag = 1007;
constexpr int lastSymbolTag = 1010;
constexpr int dateMenuIndex = 0;
constexpr int timeMenuIndex = 1;
constexpr int phraseMenuIndex = 5;
/// The time that a menu takes to open grows with the square of its items (0.2 s for 5 000), and nobody finds one in a
/// menu of more than these.
constexpr int mostReferenceItems = 500;
constexpr QSize referenceListSize(360, 420);
constexpr int referenceListSpacing = 2;

void enable(QWidget* control, bool enabled)
{
    if (control != nullptr) {
        control->setEnabled(enabled);
    }
}

/// The font that mail is written in. Where the settings of mail name none, it is that of plain text, by the name of a
/// family that other programs know too.
QFont mailFont()
{
    const QString mail = u"com.apple.mail"_s;
    const auto named = Rtf::Font::fromName(Preferences::copyValue(u"NSFont"_s, mail).string());
    const auto size = Preferences::copyValue(u"NSFontSize"_s, mail).integerValue();
    QFont font = TextView::systemFont();
    font.setFamily(named.family.isEmpty() ? QFontInfo(font).family() : named.family);
    font.setBold(named.bold);
    font.setItalic(named.italic);
    if (size > 0) {
        font.setPointSize(int(std::min<qint64>(size, 1000)));
    }
    return font;
}

} // namespace

BYEditPaneController::BYEditPaneController(EditSession& session, QObject* parent)
    : QObject(parent)
    , m_session(session)
{
}

void BYEditPaneController::awakeFromNib()
{
    m_setUp = QDateTime::currentDateTime();
    m_references = new PhraseReferences(BYGlobals::clippingsArray(), m_setUp, this);
    if (dateTimePopUpButton != nullptr) {
        if (dateFormats == nullptr) {
            dateFormats = EditPaneMenus::makeDateFormats(dateTimePopUpButton);
        }
        dateTimePopUpButton->menu()->actions().constFirst()->setMenu(dateFormats);
    }
    if (textFormattingPopUpButton != nullptr) {
        if (textFormats == nullptr) {
            textFormats = EditPaneMenus::makeTextFormats(textFormattingPopUpButton);
        }
        textFormattingPopUpButton->menu()->actions().constFirst()->setMenu(textFormats);
    }
    connectMenus();
}

void BYEditPaneController::titleFormats(const QMenu& menu) const
{
    for (QAction* const item : menu.actions()) {
        item->setText(descriptionWithCalendarFormat(item->toolTip(), m_setUp));
    }
}

void BYEditPaneController::connectMenus()
{
    if (textFormats != nullptr) {
        connectItems(*textFormats);
    }
    if (dateFormats == nullptr) {
        return;
    }
    for (const int index : {dateMenuIndex, timeMenuIndex}) {
        const QMenu& formats = *dateFormats->actions().at(index)->menu();
        titleFormats(formats);
        connectItems(formats);
    }
    connectItems(*dateFormats);
    QMenu* const phrases = dateFormats->actions().at(phraseMenuIndex)->menu();
    PlainToolTip::useIn(*phrases);
    connect(phrases, &QMenu::aboutToShow, this, [this, phrases] { fillReferences(*phrases); });
}

void BYEditPaneController::connectItems(const QMenu& menu)
{
    for (QAction* const item : menu.actions()) {
        if (item->menu() == nullptr) {
            connect(item, &QAction::triggered, this, [this, item] { enterDateTimeSyntax(item); });
        }
    }
}

// The phrases are those of the set-up; their items are made when somebody looks.
void BYEditPaneController::fillReferences(QMenu& menu)
{
    if (!menu.isEmpty()) {
        return;
    }
    if (m_references->rowCount() > mostReferenceItems) {
        addReferenceList(menu);
        return;
    }
    for (int row = 0; row < m_references->rowCount(); ++row) {
        QAction* const item = makeReferenceItem(row, &menu);
        menu.addAction(item);
        connect(item, &QAction::triggered, this, [this, item] { clippingMenuItemSelected(item); });
    }
}

QAction* BYEditPaneController::makeReferenceItem(int row, QObject* parent) const
{
    const QString phrase = m_references->phrase(row);
    // A menu takes what follows a tab for the item's keys.
    QString title = phrase;
    auto* const item = new QAction(title.replace(u'&', u"&&"_s).replace(u'\t', u' '), parent);
    item->setData(phrase);
    PlainToolTip::setOn(*item, m_references->filledText(row));
    return item;
}

// One item that holds a list of all phrases, which scrolls and finds what is typed.
void BYEditPaneController::addReferenceList(QMenu& menu)
{
    auto* const list = new QListView(&menu);
    list->setModel(m_references);
    list->setUniformItemSizes(true);
    list->setSpacing(referenceListSpacing);
    list->setFrameShape(QFrame::NoFrame);
    list->setMinimumSize(referenceListSize);
    list->setCurrentIndex(m_references->index(0));
    list->setAccessibleName(menu.title());
    auto* const holder = new QWidgetAction(&menu);
    holder->setDefaultWidget(list);
    menu.addAction(holder);
    // Keys go to what has the focus in the menu in front, which would be the menu itself.
    list->setFocus();
    const auto choose = [this, &menu](const QModelIndex& index) {
        // A style may count one click as both signals.
        if (!menu.isVisible()) {
            return;
        }
        while (QWidget* const popup = QApplication::activePopupWidget()) {
            popup->close();
        }
        const std::unique_ptr<QAction> item(makeReferenceItem(index.row(), nullptr));
        clippingMenuItemSelected(item.get());
    };
    connect(list, &QListView::clicked, this, choose);
    connect(list, &QListView::activated, this, choose);
}

void BYEditPaneController::clippingMenuItemSelected(QAction* sender)
{
    insert(QString(referenceMarker));
    insert(sender->data().toString());
    insert(QString(referenceMarker));
}

void BYEditPaneController::insert(const QString& text)
{
    if (editPane != nullptr) {
        editPane->insertText(text);
    }
}

void BYEditPaneController::enterDateTimeSyntax(QAction* sender)
{
    static const QStringList markers{u"%|"_s, u"%<"_s, u"%^"_s, u"%>"_s, u"%v"_s, u"%+"_s, u"%-"_s};

    const int tag = sender->data().toInt();
    if (tag <= lastFormatTag) {
        insert(sender->toolTip());
    } else if (tag < firstSymbolTag) {
        insert(markers[tag - firstMarkerTag]);
    } else if (tag <= lastSymbolTag) {
        insert(sender->text().left(1));
    }
}

void BYEditPaneController::saveEditedAbb(QObject* /*sender*/)
{
    const int row = abbsTableView != nullptr ? abbsTableView->selectedRow() : -1;
    const Phrase phrase = DocumentEntry::at(BYGlobals::clippingsArray(), row);
    if (editPane == nullptr || !phrase) {
        return;
    }
    m_session.saveByButton(phrase);
    Changes::saveDocument({NotificationName::preferencesChanged});
    abbsTableView->reloadData();
}

void BYEditPaneController::plainOrRich(Matrix* sender)
{
    m_session.offerSave();
    if (editPane == nullptr) {
        return;
    }
    if (Matrix::tagOf(sender->selectedCell()) == richTag) {
        makeRich();
        return;
    }
    if (!editPane->isRichText()) {
        showPlainAttributes();
        return;
    }
    // The window is blocked, but the helper may have the pane show another phrase meanwhile.
    const auto didEnd = [self = QPointer(this), revision = editPane->document()->revision()](int returnCode) {
        if (self && self->editPane->document()->revision() == revision) {
            self->alertDidEnd_returnCode_contextInfo(nullptr, returnCode, nullptr);
        }
    };
    Alert::beginSheet(editPane->window(), Text::tr("Really make this plain text?"),
        Text::tr("Once you save the clipping as plain text, you won't be able to retrieve any attributes such as font, "
                 "style or colour."),
        Text::tr("Make Plain"), Text::tr("Keep Rich"), didEnd);
}

void BYEditPaneController::alertDidEnd_returnCode_contextInfo(QDialog* /*alert*/, int returnCode, void* /*contextInfo*/)
{
    if (returnCode == Alert::firstButtonReturn) {
        makePlain();
    } else {
        Changes::tell(NotificationName::keepRich);
    }
}

void BYEditPaneController::makePlain()
{
    if (editPane == nullptr) {
        return;
    }
    QString text = editPane->string();
    m_session.setDirty(true);
    showPlainAttributes();
    editPane->setString(text.remove(QChar(QChar::ObjectReplacementCharacter)));
}

void BYEditPaneController::showPlainAttributes()
{
    enable(textFormattingPopUpButton, false);
    editPane->setRichText(false);
    editPane->resetAttributes();
    editPane->setReadOnly(false);
    editPane->moveCursor(QTextCursor::Start);
}

void BYEditPaneController::makeRich()
{
    enable(textFormattingPopUpButton, true);
    editPane->setRichText(true);
    editPane->setImportsGraphics(true);
    editPane->setFontOfAll(mailFont());
    m_session.setDirty(true);
}

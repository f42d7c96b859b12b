#include "BYEditPaneController.h"

#include "EditPaneMenus.h"
#include "PullDownButton.h"
#include "parseNSStringStamp4strftime.h"

#include <QAbstractButton>
#include <QFontDatabase>
#include <QMenu>
#include <QPointer>

#include <Alert.h>
#include <BYGlobals.h>
#include <Bundle.h>
#include <Matrix.h>
#include <Preferences.h>
#include <SharedNames.h>
#include <TableView.h>
#include <TextView.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t referenceMarker = u'\u270D';
constexpr int richTag = 1;
constexpr int lastFormatTag = 999;
constexpr int firstMarkerTag = 1000;
constexpr int firstSymbolTag = 1007;
constexpr int lastSymbolTag = 1010;
constexpr int phraseMenuIndex = 5;

QString localized(const QString& text)
{
    return Bundle::bundleWithIdentifier(paneBundleIdentifier).localizedString(text);
}

/// The font that mail is written in; the desktop's own where the settings of mail name none.
QFont mailFont()
{
    const QString mail = u"com.apple.mail"_s;
    const QString name = Preferences::copyValue(u"NSFont"_s, mail).string();
    const auto size = Preferences::copyValue(u"NSFontSize"_s, mail).integerValue();
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (!name.isEmpty()) {
        font.setFamily(name);
    }
    if (size > 0) {
        font.setPointSize(int(std::min<qint64>(size, 1000)));
    }
    return font;
}

} // namespace

BYEditPaneController::BYEditPaneController(QObject* parent)
    : QObject(parent)
{
}

void BYEditPaneController::awakeFromNib()
{
    if (dateFormats == nullptr) {
        dateFormats = EditPaneMenus::makeDateFormats(dateTimePopUpButton);
    }
    if (textFormats == nullptr) {
        textFormats = EditPaneMenus::makeTextFormats(textFormattingPopUpButton);
    }
    dateTimePopUpButton->menu()->actions().constFirst()->setMenu(dateFormats);
    textFormattingPopUpButton->menu()->actions().constFirst()->setMenu(textFormats);
    m_setUp = QDateTime::currentDateTime();
    titleFormats(*dateFormats->actions().at(0)->menu());
    titleFormats(*dateFormats->actions().at(1)->menu());
    collectReferences();
    connectMenus();
}

void BYEditPaneController::titleFormats(const QMenu& menu) const
{
    for (QAction* const item : menu.actions()) {
        item->setText(descriptionWithCalendarFormat(item->toolTip(), m_setUp));
    }
}

void BYEditPaneController::collectReferences()
{
    const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
    if (!phrases) {
        return;
    }
    for (const PropertyList::Value& value : *phrases) {
        const PropertyList::DictionaryPointer entry = value.dictionary();
        const PropertyList::Value phrase = entry ? entry->value(PhraseKey::phrase) : PropertyList::Value();
        if (!phrase.isNull()) {
            m_references.push_back({phrase.textValue(), entry->value(PhraseKey::plainText).string()});
        }
    }
}

void BYEditPaneController::connectMenus()
{
    const QList<const QMenu*> menus{
        dateFormats->actions().at(0)->menu(), dateFormats->actions().at(1)->menu(), dateFormats, textFormats};
    for (const QMenu* const menu : menus) {
        for (QAction* const item : menu->actions()) {
            if (item->menu() == nullptr) {
                connect(item, &QAction::triggered, this, [this, item] { enterDateTimeSyntax(item); });
            }
        }
    }
    QMenu* const phrases = dateFormats->actions().at(phraseMenuIndex)->menu();
    connect(phrases, &QMenu::aboutToShow, this, [this, phrases] { fillReferences(*phrases); });
}

void BYEditPaneController::fillReferences(QMenu& menu)
{
    // A document may hold 100 000 phrases: their items are made when somebody looks, from what was there at set-up.
    for (Reference& reference : m_references) {
        QAction* const item = menu.addAction(QString(reference.phrase).replace(u'&', u"&&"_s));
        parseNSStringStamp4strftime(reference.text, m_setUp);
        item->setToolTip(reference.text);
        item->setData(reference.phrase);
        connect(item, &QAction::triggered, this, [this, item] { clippingMenuItemSelected(item); });
    }
    m_references.clear();
}

void BYEditPaneController::clippingMenuItemSelected(QAction* sender)
{
    editPane->insertText(QString(referenceMarker));
    editPane->insertText(sender->data().toString());
    editPane->insertText(QString(referenceMarker));
}

void BYEditPaneController::enterDateTimeSyntax(QAction* sender)
{
    static const QStringList markers{u"%|"_s, u"%<"_s, u"%^"_s, u"%>"_s, u"%v"_s, u"%+"_s, u"%-"_s};

    const int tag = sender->data().toInt();
    if (tag <= lastFormatTag) {
        editPane->insertText(sender->toolTip());
    } else if (tag < firstSymbolTag) {
        editPane->insertText(markers[tag - firstMarkerTag]);
    } else if (tag <= lastSymbolTag) {
        editPane->insertText(sender->text().first(1));
    }
}

void BYEditPaneController::saveEditedAbb(QObject* /*sender*/)
{
    const int row = abbsTableView->selectedRow();
    const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
    if (row < 0 || !phrases || row >= phrases->size()) {
        return;
    }
    const PropertyList::DictionaryPointer entry = phrases->at(row).dictionary();
    if (!entry) {
        return;
    }
    const QString text = editPane->string();
    if (Matrix::tagOf(plainOrRichRadioButton->selectedCell()) == richTag) {
        entry->insert(PhraseKey::rtfd, editPane->RTFDFromAll());
    } else {
        entry->remove(PhraseKey::rtfd);
    }
    entry->insert(PhraseKey::plainText, text);
    BYGlobals::setEditEntryPaneTextIsDirty(false);
    saveEditedAbbButton->setEnabled(false);
    BYGlobals::writeDocument();
    abbsTableView->reloadData();
    BYGlobals::sendNotification(NotificationName::preferencesChanged);
}

void BYEditPaneController::plainOrRich(Matrix* sender)
{
    saveEditedAbbButton->setEnabled(true);
    if (Matrix::tagOf(sender->selectedCell()) == richTag) {
        makeRich();
        return;
    }
    if (!editPane->isRichText()) {
        showPlainAttributes();
        return;
    }
    const auto didEnd = [self = QPointer(this)](int returnCode) {
        if (self) {
            self->alertDidEnd_returnCode_contextInfo(nullptr, returnCode, nullptr);
        }
    };
    Alert::beginSheet(editPane->window(), localized(u"Really make this plain text?"_s),
        localized(
            u"Once you save the clipping as plain text, you won't be able to retrieve any attributes such as font, "
            u"style or colour."_s),
        localized(u"Make Plain"_s), localized(u"Keep Rich"_s), didEnd);
}

void BYEditPaneController::alertDidEnd_returnCode_contextInfo(QDialog* /*alert*/, int returnCode, void* /*contextInfo*/)
{
    if (returnCode == Alert::firstButtonReturn) {
        makePlain();
    } else {
        BYGlobals::sendNotification(NotificationName::keepRich);
    }
}

void BYEditPaneController::makePlain()
{
    QString text = editPane->string();
    BYGlobals::setEditEntryPaneTextIsDirty(true);
    showPlainAttributes();
    editPane->setString(text.remove(QChar(QChar::ObjectReplacementCharacter)));
}

void BYEditPaneController::showPlainAttributes()
{
    textFormattingPopUpButton->setEnabled(false);
    editPane->setRichText(false);
    editPane->resetAttributes();
    editPane->setReadOnly(false);
    editPane->moveCursor(QTextCursor::Start);
}

void BYEditPaneController::makeRich()
{
    textFormattingPopUpButton->setEnabled(true);
    editPane->setRichText(true);
    editPane->setImportsGraphics(true);
    editPane->setFontOfAll(mailFont());
    BYGlobals::setEditEntryPaneTextIsDirty(true);
}

// SPDX-License-Identifier: MIT
#include "EditSession.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <core/SharedNames.h>
#include <platform/controls/Matrix.h>
#include <platform/desktop/Text.h>
#include <platform/panels/Alert.h>
#include <platform/richtext/Rtfd.h>
#include <platform/richtext/TextView.h>

#include <QLoggingCategory>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.phrases")

constexpr int plainColumn = 0;
constexpr int richColumn = 1;
constexpr int richTag = 1;

void enable(QWidget* control, bool enabled)
{
    if (control) {
        control->setEnabled(enabled);
    }
}

} // namespace

EditSession::EditSession(const Views& views, QObject* parent)
    : QObject(parent)
    , m_views(views)
{
}

void EditSession::load(int row)
{
    for (QWidget* view : std::initializer_list<QWidget*>{
             m_views.text, m_views.dateTime, m_views.textFormatting, m_views.plainOrRich, m_views.save}) {
        if (view) {
            view->setVisible(row != -1);
        }
    }
    const PropertyList::DictionaryPointer entry = DocumentEntry::at(BYGlobals::clippingsArray(), row);
    if (entry && m_views.text) {
        loadText(entry);
        setDirty(false);
    } else {
        clear();
    }
}

void EditSession::loadText(const Phrase& phrase)
{
    TextView& view = *m_views.text;
    const QString name = phrase->value(PhraseKey::phrase).string();
    const QString text = name.isNull() ? QString() : BYGlobals::fullTextFor(name);
    if (!text.isNull()) {
        view.setString(text);
        view.resetAttributes();
        view.setReadOnly(false);
        view.moveCursor(QTextCursor::Start);
    }
    const std::optional<QByteArray> rtfd = phrase.rtfd();
    const bool isRich = rtfd.has_value();
    if (isRich) {
        const auto read = view.replaceAllWithRTFD(*rtfd);
        const QString problem = read ? read->join(u"; "_s) : read.error();
        if (!problem.isEmpty()) {
            qCWarning(log).noquote() << u"rich text of \"%1\": %2"_s.arg(name, problem);
        }
        view.setReadOnly(false);
    }
    view.setRichText(isRich);
    view.setImportsGraphics(isRich);
    enable(m_views.textFormatting, isRich);
    if (m_views.plainOrRich) {
        m_views.plainOrRich->setState_atRow_column(true, 0, isRich ? richColumn : plainColumn);
    }
}

void EditSession::clear()
{
    if (m_views.text) {
        m_views.text->setString(u""_s);
        m_views.text->setReadOnly(true);
    }
    setDirty(false);
}

bool EditSession::isDirty() const
{
    return BYGlobals::editEntryPaneTextIsDirty();
}

void EditSession::setDirty(bool dirty)
{
    BYGlobals::setEditEntryPaneTextIsDirty(dirty);
    enable(m_views.save, dirty);
}

void EditSession::offerSave()
{
    enable(m_views.save, true);
}

void EditSession::typingAttributesDidChange()
{
    if (m_views.plainOrRich && m_views.plainOrRich->selectedColumn() == richColumn) {
        setDirty(true);
    }
}

bool EditSession::confirmSave(const QString& phrase) const
{
    if (!m_views.text) {
        return false;
    }
    qCInfo(log).noquote() << u"do you wish to remove? "_s;
    const QString message = Text::tr("Do you wish to save the changes you made to '") + phrase + Text::tr("'?");
    const int result = Alert::runAlertPanel(m_views.text->window(), Text::tr("Blipsy"), message, Text::tr("Save"),
        Text::tr("Discard"), Alert::Dismissal::IsRefused);
    std::fprintf(stderr, "NSRunAlertPanel result = %d.\n", result);
    return result == Alert::defaultReturn;
}

// The two savers put one text under two keys, and ask two views whether it is rich. Both is meant: what the question
// saves is what the pane loads again, what the button saves is what the helper types.
void EditSession::saveAfterQuestion(const Phrase& phrase) const
{
    phrase.setSoundFilepath(m_views.text->string());
    phrase.setRtfd(formatting(m_views.text->isRichText()));
}

void EditSession::saveByButton(const Phrase& phrase)
{
    phrase.setRtfd(formatting(isRichChosen()));
    phrase.setPlainText(m_views.text->string());
    setDirty(false);
}

std::optional<QByteArray> EditSession::formatting(bool isRich) const
{
    return isRich ? std::optional(m_views.text->RTFDFromAll()) : std::nullopt;
}

// Without the choice the text is stored as it is.
bool EditSession::isRichChosen() const
{
    return m_views.plainOrRich ? Matrix::tagOf(m_views.plainOrRich->selectedCell()) == richTag
                               : m_views.text->isRichText();
}

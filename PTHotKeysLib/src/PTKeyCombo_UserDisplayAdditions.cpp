// SPDX-License-Identifier: MIT
#include "PTKeyCombo.h"

#include "PTKeyCodeTranslator.h"

#include <platform/desktop/Bundle.h>
#include <platform/desktop/Gestalt.h>
#include <platform/desktop/Text.h>

#include <QHash>
#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.hotkeys")

struct ModifierGlyph
{
    quint32 mask;
    /// A 16-bit character in the half of the word that a processor of the table's kind stores first.
    quint32 word;
};

using ModifierGlyphs = std::array<ModifierGlyph, 4>;

/// In the order in which they are shown: command, option, control, shift.
constexpr ModifierGlyphs modToChar{{
    {0x100, 0x23180000},
    {0x800, 0x23250000},
    {0x1000, 0x005E0000},
    {0x200, 0x21E70000},
}};

constexpr ModifierGlyphs modToCharIntel{{
    {0x100, 0x2318},
    {0x800, 0x2325},
    {0x1000, 0x005E},
    {0x200, 0x21E7},
}};

QChar glyphOf(quint32 word)
{
    char16_t character = 0;
    std::memcpy(&character, &word, sizeof character);
    return {character};
}

const ModifierGlyphs& glyphsOfThisProcessor()
{
    Gestalt::Answer answer = Gestalt::query(Gestalt::systemArchitecture);
    if (answer.error != 0) {
        qCWarning(log, "gestaltSysArchitecture returned error = %d", answer.error);
        answer.response = Gestalt::nativeArchitecture();
    }
    return answer.response == Gestalt::intelArchitecture ? modToCharIntel : modToChar;
}

constexpr qint64 maximumTableSize = 1 << 20;

PropertyList::DictionaryPointer readKeyCodes()
{
    const QString path = Bundle::resourcePath() + u"/PTKeyCodes.plist"_s;
    const auto names = PropertyList::readFile(path, maximumTableSize);
    if (!names) {
        qCWarning(log).noquote() << path << "is no table of key names:" << names.error();
        return {};
    }
    return *names;
}

bool isPadKey(const PropertyList::DictionaryPointer& names, QStringView keyCode)
{
    const PropertyList::ArrayPointer padKeys = names->value(u"padKeys").array();
    return padKeys && std::any_of(padKeys->begin(), padKeys->end(),
                          [keyCode](const PropertyList::Value& padKey) { return padKey.stringView() == keyCode; });
}

/// The names already made, for the keyboard layout that they were made with; none that a dead key had a part in.
struct NameCache
{
    PTKeyCodeTranslator::Pointer translator;
    QHash<qint16, QString> names;
};

} // namespace

QString PTKeyCombo::description() const
{
    if (!isValidHotKeyCombo()) {
        return Text::tr("(None)");
    }
    return _stringForModifiers(quint32(mModifiers)) + _stringForKeyCode(qint16(mKeyCode));
}

QString PTKeyCombo::_stringForModifiers(quint32 modifiers)
{
    QString glyphs;
    for (const ModifierGlyph& glyph : glyphsOfThisProcessor()) {
        if ((modifiers & glyph.mask) != 0) {
            glyphs += glyphOf(glyph.word);
        }
    }
    return glyphs;
}

PropertyList::DictionaryPointer PTKeyCombo::_keyCodesDictionary()
{
    static const PropertyList::DictionaryPointer keyCodes = readKeyCodes();
    return keyCodes;
}

QString PTKeyCombo::_stringForKeyCode(qint16 keyCode)
{
    static NameCache cache;
    const PTKeyCodeTranslator::Pointer translator = PTKeyCodeTranslator::currentTranslator();
    if (translator != cache.translator) {
        cache = {translator, {}};
    }
    const auto isDeadKeyPending = [&translator] { return translator && translator->isDeadKeyPending(); };
    const bool wasDeadKeyPending = isDeadKeyPending();
    const auto known = cache.names.constFind(keyCode);
    if (!wasDeadKeyPending && known != cache.names.constEnd()) {
        return *known;
    }
    const PropertyList::DictionaryPointer table = _keyCodesDictionary();
    const bool isCurrentShape = table && table->value(u"version").integerValue() > 0;
    const QString name = isCurrentShape ? _stringForKeyCode_newKeyCodeMap(keyCode, table)
                                        : _stringForKeyCode_legacyKeyCodeMap(keyCode, table);
    if (!wasDeadKeyPending && !isDeadKeyPending()) {
        cache.names.insert(keyCode, name);
    }
    return name;
}

QString PTKeyCombo::_stringForKeyCode_legacyKeyCodeMap(qint16 keyCode, const PropertyList::DictionaryPointer& names)
{
    const PropertyList::Value name = names ? names->value(QString::number(keyCode)) : PropertyList::Value();
    if (name.isNull()) {
        return QString::number(quint32(keyCode), 16).toUpper();
    }
    return name.textValue();
}

QString PTKeyCombo::_stringForKeyCode_newKeyCodeMap(qint16 keyCode, const PropertyList::DictionaryPointer& names)
{
    const QString code = QString::number(keyCode);
    const PropertyList::DictionaryPointer unmappedKeys = names->value(u"unmappedKeys").dictionary();
    if (unmappedKeys && unmappedKeys->contains(code)) {
        return unmappedKeys->value(code).textValue();
    }
    const PTKeyCodeTranslator::Pointer translator = PTKeyCodeTranslator::currentTranslator();
    const QString character = translator ? translator->translateKeyCode(keyCode).toUpper() : QString();
    if (character.isEmpty() || !isPadKey(names, code)) {
        return character;
    }
    return names->value(u"padKeyString").textValue() + u' ' + character;
}

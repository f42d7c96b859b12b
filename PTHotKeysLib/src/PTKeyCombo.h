// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QMetaType>
#include <QString>

/// A key combination: one key, named by its virtual key code, and a mask of modifiers in the classic encoding of
/// keyboard events (command 0x100, shift 0x200, option 0x800, control 0x1000, function key 0x8000). An immutable value.
///
/// It is *valid*, usable as a hot key, with a key code of 0 or more and modifiers greater than 0; it is *clear* with
/// both at -1. It can be neither, and then counts as invalid everywhere.
class PTKeyCombo final
{
public:
    /// The clear combination.
    PTKeyCombo() = default;
    /// Exactly these values; nothing is checked.
    PTKeyCombo(qint32 keyCode, qint32 modifiers);

    static PTKeyCombo clearKeyCombo();
    static PTKeyCombo keyComboWithKeyCode_modifiers(qint32 keyCode, qint32 modifiers);

    /// Reads the stored form, a dictionary of the integers "keyCode" and "modifiers". Null or without entries: the
    /// clear combination. A missing or unreadable key code counts as 0 and a negative one as -1; modifiers that are
    /// missing, unreadable, 0 or negative as -1.
    static PTKeyCombo initWithPlistRepresentation(const PropertyList::DictionaryPointer& plist);
    /// The stored form.
    PropertyList::DictionaryPointer plistRepresentation() const;

    /// The combination itself: what cannot change needs no second copy.
    const PTKeyCombo& copyWithZone() const { return *this; }

    bool isEqual(const PTKeyCombo& other) const { return *this == other; }

    bool operator==(const PTKeyCombo& other) const = default;

    qint32 keyCode() const { return mKeyCode; }

    qint32 modifiers() const { return mModifiers; }

    bool isValidHotKeyCombo() const;
    bool isClearCombo() const;

    /// The text that the user sees: the glyphs of the modifiers and the key's name, or the localized "(None)" when the
    /// combination is not valid.
    QString description() const;

    /// @name User display
    /// What description() is made of.
    /// @{

    /// The glyphs of the modifiers in @p modifiers, always in the order command, option, control, shift; other bits
    /// show nothing.
    static QString _stringForModifiers(quint32 modifiers);
    /// The names of the keys whose name is not that of a character: "PTKeyCodes.plist" of the pane's resources, read
    /// once per process. Null when it is missing or no dictionary.
    static PropertyList::DictionaryPointer _keyCodesDictionary();
    /// The name of a key, from _keyCodesDictionary() in the shape that it has; current when its "version" is greater
    /// than 0.
    static QString _stringForKeyCode(qint16 keyCode);
    /// By a table in the legacy shape (key code in decimal text → name). A key that it does not name is shown as its
    /// key code in hexadecimal.
    static QString _stringForKeyCode_legacyKeyCodeMap(qint16 keyCode, const PropertyList::DictionaryPointer& names);
    /// By a table in the current shape: "unmappedKeys" (key code in decimal text → name) first, otherwise the character
    /// on the key in upper case, after "padKeyString" and a space for the keys in the array "padKeys". Empty for a key
    /// that has neither a name nor a character.
    static QString _stringForKeyCode_newKeyCodeMap(qint16 keyCode, const PropertyList::DictionaryPointer& names);

    /// @}

private:
    qint32 mKeyCode = -1;
    qint32 mModifiers = -1;
};

Q_DECLARE_METATYPE(PTKeyCombo)

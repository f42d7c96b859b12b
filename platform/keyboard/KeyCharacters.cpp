// SPDX-License-Identifier: MIT
#include "KeyCharacters.h"

#include <QKeyEvent>

namespace {

constexpr QChar deleteCharacter(0x7F);
constexpr QChar enterCharacter(0x03);
constexpr QChar upArrow(0xF700);
constexpr QChar downArrow(0xF701);
constexpr QChar leftArrow(0xF702);
constexpr QChar rightArrow(0xF703);

} // namespace

QString keyCharacters(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return deleteCharacter;
    case Qt::Key_Enter:
        return enterCharacter;
    case Qt::Key_Up:
        return upArrow;
    case Qt::Key_Down:
        return downArrow;
    case Qt::Key_Left:
        return leftArrow;
    case Qt::Key_Right:
        return rightArrow;
    default:
        break;
    }
    // With Control the text is a control character; the key itself names the letter.
    if ((event.modifiers() & Qt::ControlModifier) && !(event.modifiers() & Qt::AltModifier)) {
        const bool isCharacter = event.key() >= Qt::Key_Space && event.key() <= 0xFFFF;
        return isCharacter ? QString(QChar(event.key()).toLower()) : QString();
    }
    return event.text();
}

#include "BYController.h"

#include "BYGlobals.h"
#include "ControlTitle.h"
#include "SharedNames.h"

#include <QPushButton>
#include <QVariant>

#include <Bundle.h>
#include <Preferences.h>

using namespace Qt::StringLiterals;

namespace {

QString localized(const QString& text)
{
    return Bundle::bundleWithIdentifier(paneBundleIdentifier).localizedString(text);
}

} // namespace

void BYController::setUpHotKeys()
{
    theHotButtons = {addHotKeyButton, editHotKeyButton, pauseHotKeyButton};
    theHotKeysNames = {localized(u"Add a Clipping"_s), localized(u"Edit Clippings"_s), localized(u"Pause/Resume"_s)};
    UserDefaults& defaults = UserDefaults::standardUserDefaults();
    defaults.addSuiteNamed(BYGlobals::appID());
    defaults.synchronize();
    for (size_t i = 0; i < hotKeyCount; ++i) {
        const QString& name = theHotKeysNames[i];
        const auto combo = PTKeyCombo::initWithPlistRepresentation(defaults.objectForKey(name).dictionary());
        mHotKey[i] = std::make_shared<PTHotKey>(name, combo);
        mHotKey[i]->setName(name);
        showHotKey(i, combo);
    }
}

void BYController::showHotKey(size_t index, const PTKeyCombo& combo)
{
    if (QPushButton* const button = theHotButtons[index]) {
        button->setText(textForTitle(combo.description()));
    }
}

void BYController::hitSetAddHotKey(QPushButton* sender)
{
    const int index = sender->property("tag").toInt();
    if (index < 0 || index >= hotKeyCount) {
        return;
    }
    tag = index;
    const PTHotKey::Pointer& hotKey = mHotKey[size_t(tag)];
    hotKey->setName(theHotKeysNames[size_t(tag)]);
    PTKeyComboPanel& panel = PTKeyComboPanel::sharedPanel();
    panel.setKeyCombo(hotKey->keyCombo());
    panel.setKeyBindingName(hotKey->name());
    panel.runSheeetForModalWindow_target(sender->window(), this);
}

void BYController::hotKeySheetDidEndWithReturnCode(int returnCode)
{
    if (returnCode != PTKeyComboPanel::okReturn) {
        return;
    }
    const auto index = size_t(tag);
    const PTKeyCombo combo = PTKeyComboPanel::sharedPanel().keyCombo();
    mHotKey[index]->setKeyCombo(combo);
    showHotKey(index, combo);
    BYGlobals::storeSetting(combo.plistRepresentation(), theHotKeysNames[index]);
    BYGlobals::sendNotification(NotificationName::preferencesChanged);
}

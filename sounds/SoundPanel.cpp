#include "SoundPanel.h"

#include "SoundKinds.h"

#include <QAbstractButton>

#include <Bundle.h>
#include <OpenPanel.h>
#include <SharedNames.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A button's clicks go to one action, the one set last.
void setAction(QAbstractButton* button, QObject* receiver, std::function<void()> action)
{
    if (button) {
        QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
        QObject::connect(button, &QAbstractButton::clicked, receiver, std::move(action));
    }
}

void setEnabled(QAbstractButton* button, bool enabled)
{
    if (button) {
        button->setEnabled(enabled);
    }
}

} // namespace

void SoundPanel::prepare(OpenPanel& panel, const SoundPanelAccessory& accessory, QObject* receiver,
    std::function<void()> play, std::function<void()> stop)
{
    panel.setAccessoryView(accessory.view);
    setEnabled(accessory.playButton, false);
    setAction(accessory.playButton, receiver, std::move(play));
    setAction(accessory.stopButton, receiver, std::move(stop));
    setEnabled(accessory.stopButton, false);
}

void SoundPanel::selectionDidChange(const OpenPanel& panel, const SoundPanelAccessory& accessory)
{
    const QStringList paths = panel.filenames();
    if (paths.isEmpty()) {
        return;
    }
    const bool isFolder = SoundKinds::folderExists(paths.constFirst());
    setEnabled(accessory.playButton, !isFolder);
    setEnabled(accessory.addToFavouritesButton, isFolder);
}

QStringList SoundPanel::run(OpenPanel& panel)
{
    panel.setTitle(Bundle::bundleWithIdentifier(paneBundleIdentifier).localizedString(u"Choose a Sound"_s));
    panel.setAllowsMultipleSelection(false);
    panel.setCanChooseDirectories(true);
    panel.setCanChooseFiles(true);
    const int result = panel.runModalForDirectory_file_types(u"/"_s, {}, SoundKinds::openPanelTypes());
    return result == okButton ? panel.filenames() : QStringList();
}

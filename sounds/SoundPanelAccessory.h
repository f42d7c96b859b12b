// SPDX-License-Identifier: MIT
#pragma once

#include "ui_SoundPanelAccessory.h"

#include <QWidget>

/// The accessory view of the panel in which a sound is chosen: whom it is for, a preview and the favourite folders. One
/// serves both tables.
class SoundPanelAccessory final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SoundPanelAccessory)

public:
    explicit SoundPanelAccessory(QWidget* parent = nullptr);

    /// Connects the outlets of one table's controller. Each controller hears what is done with the favourites; it
    /// concerns the one whose panel is up.
    template <typename Controller>
    void serve(Controller* controller)
    {
        controller->myOpenPanelView = this;
        controller->myOpenPanelViewChosenEventLabel = m_form.myOpenPanelViewChosenEventLabel;
        controller->myAddToFavouritesButton = m_form.myAddToFavouritesButton;
        controller->myPlayButton = m_form.myPlayButton;
        controller->myStopButton = m_form.myStopButton;
        controller->myFavouriteFoldersPopUpButton = m_form.myFavouriteFoldersPopUpButton;

        connect(m_form.myAddToFavouritesButton, &QPushButton::clicked, controller,
            [controller] { controller->addToFavouriteDirectory(controller->myAddToFavouritesButton); });
        connect(m_form.myFavouriteFoldersPopUpButton, &QComboBox::activated, controller,
            [controller] { controller->goToFavouriteDirectory(controller->myFavouriteFoldersPopUpButton); });
    }

private:
    Ui::SoundPanelAccessory m_form;
};

// SPDX-License-Identifier: MIT
#include "EventsTab.h"

#include "ui_EventsTab.h"

#include <sounds/SoundPanelAccessory.h>

#include <QMenu>

EventsTab::EventsTab(SoundPanelAccessory& soundPanel, QWidget* parent)
    : QWidget(parent)
{
    Ui::EventsTab form;
    form.setupUi(this);
    m_controller.mySearchField = form.mySearchField;
    m_controller.mySoundEventsTable = form.mySoundEventsTable;
    m_controller.myVolumePopUp = new QMenu(this);
    m_controller.myVolumeSlider = form.myVolumeSlider;
    m_controller.myVolumeSliderLabel = form.myVolumeSliderLabel;
    soundPanel.serve(&m_controller);

    connect(form.mySearchField, &QLineEdit::textChanged, &m_controller,
        [this] { m_controller.volumePopUpAction(m_controller.mySearchField); });
    connect(form.myVolumeSlider, &Slider::acted, &m_controller, &SoundEventsController::volumeSliderAction);
}

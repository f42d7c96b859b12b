// SPDX-License-Identifier: MIT
#include "Interface.h"

#include "ui_MainView.h"

#include <appfiles/ApplicationsTab.h>
#include <editpane/EditPane.h>
#include <events/EventsTab.h>
#include <launcher/BYlauncher.h>
#include <phrases/PhrasesTab.h>
#include <platform/controls/TemplateIcon.h>
#include <platform/controls/WheelGuard.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/Text.h>
#include <platform/sound/Sound.h>
#include <prefs/OptionsTab.h>
#include <sounds/SoundPanelAccessory.h>

#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace {

/// Builds the main form in @p view and answers its tabs, as yet none.
QTabWidget* makeTabs(QWidget* view)
{
    Ui::MainView form;
    form.setupUi(view);
    return form.tabs;
}

/// A page that scrolls when the window is too small for it.
QWidget* scrolling(QWidget* page)
{
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    // It scrolls to whatever gets the focus; a stop of its own in the tab order would be an empty one.
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    return area;
}

} // namespace

Interface::Interface()
    : m_soundPanel(std::make_unique<SoundPanelAccessory>())
    , m_view(std::make_unique<QWidget>())
    , m_tabs(makeTabs(m_view.get()))
    , m_phrases(new PhrasesTab(*m_soundPanel, m_view.get()))
    , m_editPane(new EditPane(m_phrases))
    , m_events(new EventsTab(*m_soundPanel, m_view.get()))
    , m_options(new OptionsTab(m_view.get()))
    , m_applications(new ApplicationsTab(m_view.get()))
    , m_launcher(std::make_unique<BYlauncher>())
{
    addTabs();
    connectTable();
    connectLauncher();
    m_phrases->setEditPane(m_editPane);
    m_editPane->controller().abbsTableView = &m_phrases->table();
    m_options->controller().prefPaneWindow = m_view.get();
    Sound::prepareOutput();
}

Interface::~Interface() = default;

QWidget* Interface::view() const
{
    return m_view.get();
}

QStringList Interface::tabNames()
{
    return {u"Phrases"_s, u"Events"_s, u"Applications"_s, u"Options"_s};
}

bool Interface::selectTab(const QString& name)
{
    const auto index = tabNames().indexOf(name);
    if (index < 0) {
        return false;
    }
    m_tabs->setCurrentIndex(int(index));
    return true;
}

void Interface::openDocument(const QString& path)
{
    m_phrases->table().useDocument(path);
}

void Interface::willUnselect()
{
    m_phrases->table().willUnselect();
}

void Interface::addTabs()
{
    const QString resources = Bundle::resourcePath();
    const auto addTab = [&](QWidget* page, const QString& icon, const QString& title) {
        m_tabs->addTab(page, templateIcon(resources + u'/' + icon + u".tif"_s), title);
    };
    addTab(m_phrases, u"phrases"_s, Text::tr("Phrases"));
    addTab(m_events, u"events"_s, Text::tr("Events"));
    addTab(m_applications, u"applications"_s, Text::tr("Applications"));
    addTab(scrolling(m_options), u"options"_s, Text::tr("Options"));
    for (QWidget* page : std::initializer_list<QWidget*>{m_phrases, m_events, m_applications, m_options}) {
        new WheelGuard(page);
    }
    // A phrase is found by typing it, at once.
    m_view->setFocusProxy(&m_phrases->table());
}

void Interface::connectTable()
{
    BYTableView& table = m_phrases->table();
    const Ui::EditPane& editPane = m_editPane->form();
    table.saveEditedAbbButton = editPane.saveEditedAbbButton;
    table.plainOrRichRadioButton = editPane.plainOrRichRadioButton;
    table.editEntryPane = editPane.editEntryPane;
    table.dateTimePopUpButton = editPane.dateTimePopUpButton;
    table.textFormattingPopUpButton = editPane.textFormattingPopUpButton;
    table.setEditSession(m_editPane->session());
    const SoundEventsController& events = m_events->controller();
    table.myVolumeSlider = events.myVolumeSlider;
    table.myVolumeSliderLabel = events.myVolumeSliderLabel;
    table.mySoundEventsTable = events.mySoundEventsTable;
    const Ui::OptionsTab& options = m_options->form();
    table.menuPrefsMatrix = options.menuPrefsMatrix;
    table.sortPrefsMatrix = options.sortPrefsMatrix;
    table.iTunesAnnouncerPrefMatrix = options.iTunesAnnouncerPrefMatrix;
    table.onOffRadioButton = options.onOffRadioButton;
    table.playSoundOnDropPrefButton = options.playSoundOnDropPrefButton;
    table.triggersPrefsMatrix = options.triggersPrefsMatrix;
}

void Interface::connectLauncher()
{
    BYlauncher* launcher = m_launcher.get();
    Matrix* onOff = m_options->form().onOffRadioButton;
    launcher->onOffRadioButton = onOff;
    QObject::connect(onOff, &Matrix::acted, launcher, [=] {
        if (onOff->selectedColumn() == 0) {
            launcher->on(onOff);
        } else {
            launcher->off(onOff);
        }
    });
}

std::vector<std::function<void()>> Interface::setUps()
{
    return {
        [this] { m_phrases->table().awakeFromNib(); },
        [this] { m_events->controller().awakeFromNib(); },
        [this] { m_applications->controller().awakeFromNib(); },
        [this] { m_editPane->controller().awakeFromNib(); },
        [this] { m_options->controller().awakeFromNib(); },
    };
}

void Interface::setUpLauncher()
{
    m_launcher->awakeFromNib();
}

#include "Interface.h"

#include "ui_EditPane.h"
#include "ui_MainView.h"

#include <appfiles/ApplicationsTab.h>
#include <core/SharedNames.h>
#include <editpane/BYEditPaneController.h>
#include <events/EventsTab.h>
#include <launcher/BYlauncher.h>
#include <phrases/PhrasesTab.h>
#include <platform/controls/TemplateIcon.h>
#include <platform/controls/WheelGuard.h>
#include <platform/desktop/Bundle.h>
#include <platform/sound/Sound.h>
#include <prefs/OptionsTab.h>
#include <sounds/SoundPanelAccessory.h>

#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace {

QString localized(const QString& text)
{
    return Bundle::bundleWithIdentifier(paneBundleIdentifier).localizedString(text);
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

struct Interface::Forms
{
    Ui::MainView main;
    Ui::EditPane editPane;
    PhrasesTab* phrases = nullptr;
    EventsTab* events = nullptr;
    ApplicationsTab* applications = nullptr;
    OptionsTab* options = nullptr;
};

struct Interface::Controllers
{
    BYEditPaneController editPane;
    BYlauncher launcher;
};

Interface::Interface()
    : m_soundPanel(std::make_unique<SoundPanelAccessory>())
    , m_view(std::make_unique<QWidget>())
    , m_forms(std::make_unique<Forms>())
    , m_controllers(std::make_unique<Controllers>())
{
    buildViews();
    connectPhrases();
    connectEditPane();
    connectLauncher();
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
    m_forms->main.tabs->setCurrentIndex(int(index));
    return true;
}

void Interface::openDocument(const QString& path)
{
    m_forms->phrases->table().useDocument(path);
}

void Interface::willUnselect()
{
    m_forms->phrases->table().willUnselect();
}

void Interface::buildViews()
{
    Forms& forms = *m_forms;
    forms.main.setupUi(m_view.get());
    forms.phrases = new PhrasesTab(*m_soundPanel, m_view.get());
    forms.events = new EventsTab(*m_soundPanel, m_view.get());
    forms.applications = new ApplicationsTab(m_view.get());
    forms.options = new OptionsTab(m_view.get());
    forms.options->controller().prefPaneWindow = m_view.get();
    const std::array<QWidget*, 4> pages{forms.phrases, forms.events, forms.applications, forms.options};

    auto* editPane = new QWidget(forms.phrases);
    forms.editPane.setupUi(editPane);
    forms.editPane.formattingBar->setTextView(forms.editPane.editEntryPane);
    forms.phrases->setEditPane(editPane);

    const QString resources = Bundle::bundleWithIdentifier(paneBundleIdentifier).resourcePath();
    const auto addTab = [&](QWidget* page, const QString& name) {
        forms.main.tabs->addTab(page, templateIcon(resources + u'/' + name.toLower() + u".tif"_s), localized(name));
    };
    addTab(pages[0], u"Phrases"_s);
    addTab(pages[1], u"Events"_s);
    addTab(pages[2], u"Applications"_s);
    addTab(scrolling(pages[3]), u"Options"_s);
    for (QWidget* page : pages) {
        new WheelGuard(page);
    }
    // A phrase is found by typing it, at once.
    m_view->setFocusProxy(&forms.phrases->table());
}

void Interface::connectPhrases()
{
    const Forms& forms = *m_forms;
    BYTableView* table = &forms.phrases->table();
    table->saveEditedAbbButton = forms.editPane.saveEditedAbbButton;
    table->plainOrRichRadioButton = forms.editPane.plainOrRichRadioButton;
    table->editEntryPane = forms.editPane.editEntryPane;
    table->dateTimePopUpButton = forms.editPane.dateTimePopUpButton;
    table->textFormattingPopUpButton = forms.editPane.textFormattingPopUpButton;
    const SoundEventsController& events = forms.events->controller();
    table->myVolumeSlider = events.myVolumeSlider;
    table->myVolumeSliderLabel = events.myVolumeSliderLabel;
    table->mySoundEventsTable = events.mySoundEventsTable;
    const Ui::OptionsTab& options = forms.options->form();
    table->menuPrefsMatrix = options.menuPrefsMatrix;
    table->sortPrefsMatrix = options.sortPrefsMatrix;
    table->iTunesAnnouncerPrefMatrix = options.iTunesAnnouncerPrefMatrix;
    table->onOffRadioButton = options.onOffRadioButton;
    table->playSoundOnDropPrefButton = options.playSoundOnDropPrefButton;
    table->triggersPrefsMatrix = options.triggersPrefsMatrix;
}

void Interface::connectEditPane()
{
    const Forms& forms = *m_forms;
    BYEditPaneController* editPane = &m_controllers->editPane;
    editPane->abbsTableView = &forms.phrases->table();
    editPane->dateTimePopUpButton = forms.editPane.dateTimePopUpButton;
    editPane->textFormattingPopUpButton = forms.editPane.textFormattingPopUpButton;
    editPane->saveEditedAbbButton = forms.editPane.saveEditedAbbButton;
    editPane->editPane = forms.editPane.editEntryPane;
    editPane->plainOrRichRadioButton = forms.editPane.plainOrRichRadioButton;

    QObject::connect(forms.editPane.saveEditedAbbButton, &QPushButton::clicked, editPane,
        [editPane] { editPane->saveEditedAbb(editPane->saveEditedAbbButton); });
    QObject::connect(
        forms.editPane.plainOrRichRadioButton, &Matrix::actionTriggered, editPane, &BYEditPaneController::plainOrRich);
}

void Interface::connectLauncher()
{
    BYlauncher* launcher = &m_controllers->launcher;
    Matrix* onOff = m_forms->options->form().onOffRadioButton;
    launcher->onOffRadioButton = onOff;
    QObject::connect(onOff, &Matrix::actionTriggered, launcher, [=] {
        if (onOff->selectedColumn() == 0) {
            launcher->on(onOff);
        } else {
            launcher->off(onOff);
        }
    });
}

std::vector<std::function<void()>> Interface::setUps()
{
    Controllers& controllers = *m_controllers;
    return {
        [table = &m_forms->phrases->table()] { table->awakeFromNib(); },
        [events = &m_forms->events->controller()] { events->awakeFromNib(); },
        [applications = &m_forms->applications->controller()] { applications->awakeFromNib(); },
        [&controllers] { controllers.editPane.awakeFromNib(); },
        [options = &m_forms->options->controller()] { options->awakeFromNib(); },
        [&controllers] { controllers.launcher.awakeFromNib(); },
    };
}

#include "Interface.h"

#include "ui_EditPane.h"
#include "ui_MainView.h"
#include "ui_OptionsTab.h"
#include "ui_PhrasesTab.h"
#include "ui_PrintClippingsWindow.h"

#include <appfiles/ApplicationsTab.h>
#include <core/SharedNames.h>
#include <editpane/BYEditPaneController.h>
#include <events/EventsTab.h>
#include <launcher/BYlauncher.h>
#include <platform/controls/NotificationCenter.h>
#include <platform/controls/TemplateIcon.h>
#include <platform/controls/WheelGuard.h>
#include <platform/desktop/Bundle.h>
#include <platform/sound/Sound.h>
#include <prefs/BYController.h>
#include <sounds/SoundPanelAccessory.h>

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QStackedLayout>

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

/// Fills @p place with @p editPane while @p table has a selected row, and with a hint while it has none.
void showHintWithoutSelection(QWidget* place, QWidget* editPane, TableView* table)
{
    auto* hint = new QLabel(localized(u"Select a phrase to see its text."_s), place);
    hint->setAlignment(Qt::AlignCenter);
    hint->setEnabled(false);
    auto* layout = new QStackedLayout(place);
    layout->addWidget(hint);
    layout->addWidget(editPane);
    NotificationCenter::defaultCenter().addObserver(place, TableView::selectionDidChangeNotification, table,
        [layout, table](const Notification&) { layout->setCurrentIndex(table->selectedRow() < 0 ? 0 : 1); });
}

} // namespace

struct Interface::Forms
{
    Ui::MainView main;
    Ui::PhrasesTab phrases;
    Ui::EditPane editPane;
    Ui::OptionsTab options;
    Ui::PrintClippingsWindow printing;
    QDialog* printWindow = nullptr;
    EventsTab* events = nullptr;
    ApplicationsTab* applications = nullptr;
};

struct Interface::Controllers
{
    BYEditPaneController editPane;
    BYController options;
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
    connectOptions();
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
    m_forms->phrases.abbsTableView->useDocument(path);
}

void Interface::willUnselect()
{
    m_forms->phrases.abbsTableView->willUnselect();
}

void Interface::buildViews()
{
    Forms& forms = *m_forms;
    forms.main.setupUi(m_view.get());
    forms.events = new EventsTab(*m_soundPanel, m_view.get());
    forms.applications = new ApplicationsTab(m_view.get());
    const std::array<QWidget*, 4> pages{
        new QWidget(m_view.get()), forms.events, forms.applications, new QWidget(m_view.get())};
    forms.phrases.setupUi(pages[0]);
    forms.options.setupUi(pages[3]);
    forms.printWindow = new QDialog(m_view.get());
    forms.printing.setupUi(forms.printWindow);

    auto* editPane = new QWidget(forms.phrases.editPanePlaceholder);
    forms.editPane.setupUi(editPane);
    forms.editPane.formattingBar->setTextView(forms.editPane.editEntryPane);
    showHintWithoutSelection(forms.phrases.editPanePlaceholder, editPane, forms.phrases.abbsTableView);

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
    m_view->setFocusProxy(forms.phrases.abbsTableView);
}

void Interface::connectPhrases()
{
    const Forms& forms = *m_forms;
    BYTableView* table = forms.phrases.abbsTableView;
    table->numClippings = forms.phrases.numClippings;
    table->removeAbb = forms.phrases.removeAbb;
    table->defaultClippingsFileNSPopUpButton = forms.phrases.defaultClippingsFileNSPopUpButton;
    table->saveEditedAbbButton = forms.editPane.saveEditedAbbButton;
    table->plainOrRichRadioButton = forms.editPane.plainOrRichRadioButton;
    table->editEntryPane = forms.editPane.editEntryPane;
    table->dateTimePopUpButton = forms.editPane.dateTimePopUpButton;
    table->textFormattingPopUpButton = forms.editPane.textFormattingPopUpButton;
    const SoundEventsController& events = forms.events->controller();
    table->myVolumeSlider = events.myVolumeSlider;
    table->myVolumeSliderLabel = events.myVolumeSliderLabel;
    table->mySoundEventsTable = events.mySoundEventsTable;
    table->menuPrefsMatrix = forms.options.menuPrefsMatrix;
    table->sortPrefsMatrix = forms.options.sortPrefsMatrix;
    table->iTunesAnnouncerPrefMatrix = forms.options.iTunesAnnouncerPrefMatrix;
    table->onOffRadioButton = forms.options.onOffRadioButton;
    table->playSoundOnDropPrefButton = forms.options.playSoundOnDropPrefButton;
    table->triggersPrefsMatrix = forms.options.triggersPrefsMatrix;
    table->printClippingsWindow = forms.printWindow;
    table->printClippingsTextView = forms.printing.printClippingsTextView;
    table->printClippingsPrintButton = forms.printing.printClippingsPrintButton;
    table->printClippingsCancelButton = forms.printing.printClippingsCancelButton;

    m_soundPanel->serve(table);
    QObject::connect(forms.phrases.addAbb, &QPushButton::clicked, table, [table] { table->addRow(table); });
    QObject::connect(forms.phrases.removeAbb, &QPushButton::clicked, table, [table] { table->removeRow(table); });
    QComboBox* documents = forms.phrases.defaultClippingsFileNSPopUpButton;
    QObject::connect(documents, &QComboBox::activated, table, [table, documents] { table->openDoc(documents); });
}

void Interface::connectEditPane()
{
    const Forms& forms = *m_forms;
    BYEditPaneController* editPane = &m_controllers->editPane;
    editPane->abbsTableView = forms.phrases.abbsTableView;
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

void Interface::connectOptions()
{
    const Ui::OptionsTab& form = m_forms->options;
    BYController* options = &m_controllers->options;
    options->idleTalkIntervalText = form.idleTalkIntervalText;
    options->idleTalkIntervalStepper = form.idleTalkIntervalStepper;
    options->prefPaneWindow = m_view.get();
    options->triggerPref = form.triggerPref;
    options->expansionPref = form.expansionPref;
    options->menuPref = form.menuPref;
    options->sortPref = form.sortPref;
    options->triggersPrefsMatrix = form.triggersPrefsMatrix;
    options->onOffRadioButton = form.onOffRadioButton;
    options->addHotKeyButton = form.addHotKeyButton;
    options->editHotKeyButton = form.editHotKeyButton;
    options->pauseHotKeyButton = form.pauseHotKeyButton;

    const auto onClick = [options](QAbstractButton* button, void (BYController::*action)(QWidget*)) {
        QObject::connect(button, &QAbstractButton::clicked, options, [=] { (options->*action)(button); });
    };
    onClick(form.selectAllTriggersButton, &BYController::selectAllTriggers);
    onClick(form.deSelectAllTriggersButton, &BYController::deSelectAllTriggers);
    onClick(form.playSoundOnDropPrefButton, &BYController::enterExpansionPref);
    onClick(form.helpButton, &BYController::showHelp);

    const auto onChoice = [options](Matrix* matrix, void (BYController::*action)(Matrix*)) {
        QObject::connect(matrix, &Matrix::actionTriggered, options, action);
    };
    onChoice(form.triggersPrefsMatrix, &BYController::enterTriggerPref);
    onChoice(form.triggerDelimitersMatrix, &BYController::enterTriggerDelimitersPref);
    onChoice(form.menuPrefsMatrix, &BYController::enterMenuPref);
    onChoice(form.sortPrefsMatrix, &BYController::enterSortPref);
    onChoice(form.iTunesAnnouncerPrefMatrix, &BYController::iTunesAnnouncerPref);

    QObject::connect(form.idleTalkIntervalStepper, &QSpinBox::valueChanged, options,
        [=] { options->enterIdleTalkIntervalPref(form.idleTalkIntervalStepper); });
    QLineEdit* field = form.idleTalkIntervalText;
    const auto hearBeginOfEditing = [=] {
        const auto once = Qt::ConnectionType(Qt::UniqueConnection | Qt::SingleShotConnection);
        QObject::connect(field, &QLineEdit::textEdited, options, &BYController::textDidBeginEditing, once);
    };
    hearBeginOfEditing();
    // A field that is left without a change has nothing to say.
    QObject::connect(field, &QLineEdit::editingFinished, options, [=] {
        if (field->isModified()) {
            options->enterIdleTalkIntervalPref(field);
            hearBeginOfEditing();
        }
    });
    for (QPushButton* button : {form.addHotKeyButton, form.editHotKeyButton, form.pauseHotKeyButton}) {
        QObject::connect(button, &QPushButton::clicked, options, [=] { options->hitSetAddHotKey(button); });
    }
}

void Interface::connectLauncher()
{
    BYlauncher* launcher = &m_controllers->launcher;
    Matrix* onOff = m_forms->options.onOffRadioButton;
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
        [table = m_forms->phrases.abbsTableView] { table->awakeFromNib(); },
        [events = &m_forms->events->controller()] { events->awakeFromNib(); },
        [applications = &m_forms->applications->controller()] { applications->awakeFromNib(); },
        [&controllers] { controllers.editPane.awakeFromNib(); },
        [&controllers] { controllers.options.awakeFromNib(); },
        [&controllers] { controllers.launcher.awakeFromNib(); },
    };
}

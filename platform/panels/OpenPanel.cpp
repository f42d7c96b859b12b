// SPDX-License-Identifier: MIT
#include "OpenPanel.h"

#include "ApplicationPanel.h"
#include "FilePanel.h"

#include <platform/bytes/PathNames.h>

#include <QDir>
#include <QFileInfo>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString applicationsFolder = u"/Applications"_s;

} // namespace

class OpenPanel::Implementation
{
public:
    int chooseApplication();
    int browse(const QString& directory, const QString& file);

    QPointer<QWidget> parent;
    QString title;
    PanelRules rules;
    QPointer<QWidget> accessory;
    std::function<void()> selectionDidChange;
    /// The file browser while it runs.
    QPointer<FilePanel> filePanel;
    QStringList filenames;

private:
    void noteSelection(const QStringList& paths);
};

OpenPanel::OpenPanel(QWidget* parent)
    : m_implementation(std::make_unique<Implementation>())
{
    m_implementation->parent = parent;
}

OpenPanel::~OpenPanel() = default;

void OpenPanel::setTitle(const QString& title)
{
    m_implementation->title = title;
}

void OpenPanel::setAllowsMultipleSelection(bool allow)
{
    m_implementation->rules.allowsMultipleSelection = allow;
}

void OpenPanel::setCanChooseDirectories(bool can)
{
    m_implementation->rules.canChooseDirectories = can;
}

void OpenPanel::setCanChooseFiles(bool can)
{
    m_implementation->rules.canChooseFiles = can;
}

void OpenPanel::setAccessoryView(QWidget* view)
{
    m_implementation->accessory = view;
}

void OpenPanel::setSelectionDidChange(std::function<void()> handler)
{
    m_implementation->selectionDidChange = std::move(handler);
}

int OpenPanel::runModalForDirectory_file_types(const QString& directory, const QString& file, const QStringList& types)
{
    m_implementation->rules.types = PanelTypes(types);
    m_implementation->filenames.clear();
    const bool showsApplications =
        directory == applicationsFolder && m_implementation->rules.types.offersApplications();
    const int result = showsApplications ? m_implementation->chooseApplication() : ApplicationPanel::browse;
    return result == ApplicationPanel::browse ? m_implementation->browse(directory, file) : result;
}

int OpenPanel::Implementation::chooseApplication()
{
    ApplicationPanel panel(parent);
    if (!title.isEmpty()) {
        panel.setWindowTitle(title);
    }
    QObject::connect(
        &panel, &ApplicationPanel::selectionDidChange, &panel, [this, &panel] { noteSelection(panel.selection()); });
    const int result = panel.exec();
    if (result == QDialog::Accepted) {
        return okButton;
    }
    filenames.clear();
    return result == ApplicationPanel::browse ? ApplicationPanel::browse : cancelButton;
}

int OpenPanel::Implementation::browse(const QString& directory, const QString& file)
{
    FilePanel panel(rules, parent);
    if (!title.isEmpty()) {
        panel.setWindowTitle(title);
    }
    const QString folder = QFileInfo(directory).isDir() ? directory : QDir::homePath();
    panel.setDirectory(folder);
    if (!file.isEmpty()) {
        panel.selectFile(QDir(folder).absoluteFilePath(file));
    }
    if (accessory) {
        panel.setAccessoryView(accessory);
    }
    QObject::connect(
        &panel, &FilePanel::selectionDidChange, &panel, [this, &panel] { noteSelection(panel.selection()); });
    filePanel = &panel;
    const int result = panel.exec();
    filenames = result == QDialog::Accepted ? panel.selectedFiles() : QStringList();
    // A folder may have been typed with a slash at its end.
    for (QString& path : filenames) {
        path.truncate(withoutEndSlash(path).size());
    }
    return result == QDialog::Accepted ? okButton : cancelButton;
}

void OpenPanel::Implementation::noteSelection(const QStringList& paths)
{
    filenames = paths;
    if (selectionDidChange) {
        selectionDidChange();
    }
}

QStringList OpenPanel::filenames() const
{
    return m_implementation->filenames;
}

void OpenPanel::setDirectory(const QString& path)
{
    if (m_implementation->filePanel) {
        m_implementation->filePanel->setDirectory(path);
    }
}

// SPDX-License-Identifier: MIT
#include "OpenPanel.h"

#include "ApplicationPanel.h"
#include "FilePanel.h"

#include <platform/bytes/PathNames.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

const QString applicationsFolder = u"/Applications"_s;

} // namespace

int OpenPanel::runModalForDirectory_file_types(const QString& directory, const QString& file, const QStringList& types)
{
    m_rules.types = PanelTypes(types);
    m_filenames.clear();
    const bool showsApplications = directory == applicationsFolder && m_rules.types.offersApplications();
    const int result = showsApplications ? chooseApplication() : ApplicationPanel::browse;
    return result == ApplicationPanel::browse ? browse(directory, file) : result;
}

int OpenPanel::chooseApplication()
{
    ApplicationPanel panel(m_parent);
    if (!m_title.isEmpty()) {
        panel.setWindowTitle(m_title);
    }
    QObject::connect(
        &panel, &ApplicationPanel::selectionDidChange, &panel, [this, &panel] { noteSelection(panel.selection()); });
    const int result = panel.exec();
    if (result == QDialog::Accepted) {
        return okButton;
    }
    m_filenames.clear();
    return result == ApplicationPanel::browse ? ApplicationPanel::browse : cancelButton;
}

int OpenPanel::browse(const QString& directory, const QString& file)
{
    FilePanel panel(m_rules, m_parent);
    if (!m_title.isEmpty()) {
        panel.setWindowTitle(m_title);
    }
    const QString folder = QFileInfo(directory).isDir() ? directory : QDir::homePath();
    panel.setDirectory(folder);
    if (!file.isEmpty()) {
        panel.selectFile(QDir(folder).absoluteFilePath(file));
    }
    if (QFileInfo(m_place).isDir()) {
        panel.addPlace(m_place);
    }
    if (m_accessory) {
        panel.setAccessoryView(m_accessory);
    }
    QObject::connect(
        &panel, &FilePanel::selectionDidChange, &panel, [this, &panel] { noteSelection(panel.selection()); });
    m_filePanel = &panel;
    const int result = panel.exec();
    m_filenames = result == QDialog::Accepted ? panel.selectedFiles() : QStringList();
    // A folder may have been typed with a slash at its end.
    for (QString& path : m_filenames) {
        path.truncate(withoutEndSlash(path).size());
    }
    return result == QDialog::Accepted ? okButton : cancelButton;
}

void OpenPanel::noteSelection(const QStringList& paths)
{
    m_filenames = paths;
    if (m_selectionDidChange) {
        m_selectionDidChange();
    }
}

void OpenPanel::setDirectory(const QString& path)
{
    if (m_filePanel) {
        m_filePanel->setDirectory(path);
    }
}

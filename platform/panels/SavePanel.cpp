// SPDX-License-Identifier: MIT
#include "SavePanel.h"

#include "Alert.h"
#include "FilePanel.h"

#include <platform/desktop/Text.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Asks before the file that the caller is going to write replaces another one, and stays open where it could not be
/// written.
class SaveDialog final : public QFileDialog
{
public:
    SaveDialog(QWidget* parent, QString suffix)
        : QFileDialog(parent)
        , m_suffix(std::move(suffix))
    {
        setObjectName(u"SavePanel"_s);
        setOption(DontUseNativeDialog);
        // The question is about the file that will be written, which need not have the name as it was typed.
        setOption(DontConfirmOverwrite);
        setAcceptMode(AcceptSave);
        setFileMode(AnyFile);
        setViewMode(Detail);
        hideTypes(*this);
    }

    void accept() override
    {
        const QString path = selectedFiles().value(0);
        if (QFileInfo(path).isDir() || mayWrite(QFileInfo(path + m_suffix))) {
            QFileDialog::accept();
        }
    }

private:
    bool mayWrite(const QFileInfo& file)
    {
        if (file.isDir()) {
            refuse(Text::tr("“%1” is a folder.").arg(file.fileName()), Text::tr("Choose another name."));
            return false;
        }
        const bool isWritable = QFileInfo(file.absolutePath()).isWritable() && (!file.exists() || file.isWritable());
        if (!isWritable) {
            refuse(Text::tr("“%1” cannot be saved here.").arg(file.fileName()),
                Text::tr("Choose another name or another folder."));
            return false;
        }
        return !file.exists() || mayReplace(file);
    }

    void refuse(const QString& what, const QString& advice)
    {
        Alert::runAlertPanel(this, what, advice, Text::tr("OK"), {});
    }

    bool mayReplace(const QFileInfo& file)
    {
        return Alert::runAlertPanel(this, Text::tr("“%1” already exists.").arg(file.fileName()),
                   Text::tr("Do you want to replace it?"), Text::tr("Replace"),
                   Text::tr("Cancel")) == Alert::defaultReturn;
    }

    QString m_suffix;
};

} // namespace

SavePanel::SavePanel(QWidget* parent)
    : m_parent(parent)
{
}

int SavePanel::runModalForDirectory_file(const QString& directory, const QString& file)
{
    SaveDialog dialog(m_parent, m_suffix);
    if (!m_title.isEmpty()) {
        dialog.setWindowTitle(m_title);
    }
    dialog.setDirectory(QFileInfo(directory).isDir() ? directory : QDir::homePath());
    dialog.selectFile(file);
    if (dialog.exec() != QDialog::Accepted) {
        m_filename.clear();
        return 0;
    }
    m_filename = dialog.selectedFiles().value(0);
    return 1;
}

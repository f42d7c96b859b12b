// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLineEdit;
class QListView;
class QPushButton;
class QSortFilterProxyModel;

/// The choice of one of the desktop's applications: what an OpenPanel shows for the folder "/Applications".
class ApplicationPanel final : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ApplicationPanel)

public:
    /// The result of exec() when the user would rather browse the files.
    static constexpr int browse = 2;

    explicit ApplicationPanel(QWidget* parent);

    /// The path of the application selected now; none or one.
    QStringList selection() const;

Q_SIGNALS:
    void selectionDidChange();

protected:
    /// The search field keeps the keyboard, and leaves the keys that move up and down to the list.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void search(const QString& text);
    void noteSelection();

    QLineEdit* m_search;
    QListView* m_list;
    QPushButton* m_openButton;
    QSortFilterProxyModel* m_filter;
};

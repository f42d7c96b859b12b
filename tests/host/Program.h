// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTest>

#include <Accessible.h>

/// Runs xdotool, which moves the pointer and presses keys as a person does.
inline bool act(const QStringList& arguments)
{
    return QProcess::execute(QStringLiteral("xdotool"), arguments) == 0;
}

/// The environment of a program on the private display, with some variables changed.
inline QProcessEnvironment environmentWith(const QMap<QString, QString>& changes)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const auto& [name, value] : changes.asKeyValueRange()) {
        environment.insert(name, value);
    }
    return environment;
}

/// The program under test on the private display. Its controls are found by role and name, as assistive programs find
/// them.
class Program final
{
public:
    explicit Program(const QStringList& arguments, const QMap<QString, QString>& changes = {})
    {
        process.setProcessEnvironment(environmentWith(changes));
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(BLIPSY_HOST), arguments);
    }

    ~Program()
    {
        process.kill();
        process.waitForFinished();
    }

    Q_DISABLE_COPY_MOVE(Program)

    /// Waits for the window and gives it the keyboard; there may be no window manager that would.
    bool takeFocus() const
    {
        return QTest::qWaitFor(
            [] {
                return act({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                    QStringLiteral("^Blipsy$"), QStringLiteral("windowfocus")});
            },
            20'000);
    }

    /// Waits until a control is to be seen; null when it does not come.
    Accessible control(const QString& role, const QString& name) const
    {
        Accessible found;
        const bool isThere = QTest::qWaitFor(
            [&] {
                for (const Accessible& one : Accessible::program(process.processId()).showing()) {
                    if (one.role() == role && one.name() == name) {
                        found = one;
                        return true;
                    }
                }
                return false;
            },
            20'000);
        if (!isThere) {
            qWarning().noquote() << "no" << role << name;
        }
        return found;
    }

    /// Does what the control is for, as an assistive program asks it to.
    bool press(const QString& role, const QString& name) const { return control(role, name).act(); }

    /// What an assistive program could not tell its user: what reacts, and cells, without a role or a name.
    QStringList nameless() const
    {
        QStringList found;
        const auto check = [&found](const Accessible& one) {
            if (one.name().isEmpty() || one.role().isEmpty() || one.role() == QStringLiteral("unknown")) {
                found.append(one.role() + u' ' + one.name());
            }
        };
        for (const Accessible& one : Accessible::program(process.processId()).showing()) {
            if (one.is(Accessible::State::Focusable) || !one.actions().isEmpty()) {
                check(one);
            }
            // The toolkit bears such questions from tables only.
            const bool hasCells = one.role() == QStringLiteral("table") && one.rowCount() > 0;
            for (int column = 0; hasCells && column < one.columnCount(); ++column) {
                check(one.cell(0, column));
            }
        }
        return found;
    }

    QProcess process;
};

/// Clicks on a control with the pointer.
inline bool click(const Accessible& control)
{
    const QPoint center = control.extents().center();
    return !control.isNull() && act({QStringLiteral("mousemove"), QString::number(center.x()),
                                    QString::number(center.y()), QStringLiteral("click"), QStringLiteral("1")});
}

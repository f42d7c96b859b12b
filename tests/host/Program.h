// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTest>

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

/// The program under test on the private display, with its window in the corner of the screen.
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

    /// Waits for the window and gives it the keyboard; there is no window manager that would.
    bool takeFocus()
    {
        const bool isUp = QTest::qWaitFor([] { return !window().isEmpty(); }, 20'000);
        return isUp && act({QStringLiteral("windowmove"), window(), QStringLiteral("0"), QStringLiteral("0")}) &&
               act({QStringLiteral("windowfocus"), window()});
    }

    bool click(int x, int y)
    {
        return act({QStringLiteral("mousemove"), QStringLiteral("--window"), window(), QString::number(x),
                   QString::number(y)}) &&
               act({QStringLiteral("click"), QStringLiteral("1")});
    }

    QProcess process;

private:
    static QString window()
    {
        QProcess search;
        search.start(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                    QStringLiteral("--name"), QStringLiteral("^Blipsy$")});
        search.waitForFinished();
        return QString::fromLatin1(search.readAllStandardOutput().split('\n').first());
    }
};

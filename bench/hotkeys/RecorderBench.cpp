// SPDX-License-Identifier: MIT
#include "Bench.h"

#include <PTHotKeysLib/src/PTKeyComboPanel.h>
#include <platform/desktop/Bundle.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int presses = 200;
/// One frame of a screen that shows sixty a second.
constexpr double frameMilliseconds = 16;

struct Key
{
    int key;
    quint32 scanCode;
};

constexpr std::array keys{Key{Qt::Key_K, 45}, Key{Qt::Key_Home, 110}, Key{Qt::Key_F5, 71}, Key{Qt::Key_P, 33}};

/// Counts how often a widget is painted.
class Paintings final : public QObject
{
public:
    explicit Paintings(QWidget* widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    /// Lets the event loop run until the widget is painted once more. The event that brings that about is posted when
    /// this is called.
    void waitForNext() const
    {
        for (const int before = m_count; m_count == before;) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

private:
    int m_count = 0;
};

/// The slowest of many: a key press that shows late is seen, however fast the others are.
template <typename Function>
double slowestMilliseconds(Function&& function)
{
    double slowest = 0;
    for (int i = 0; i < presses; ++i) {
        slowest = std::max(slowest, Bench::milliseconds(1, [&] { function(i); }));
    }
    return slowest;
}

void pressKey(QWidget* widget, int index)
{
    const Key& key = keys[size_t(index) % keys.size()];
    // Delivered by the event loop, as one of the window system is.
    QCoreApplication::postEvent(
        widget, new QKeyEvent(QEvent::KeyPress, key.key, Qt::MetaModifier | Qt::ShiftModifier, key.scanCode, 0, 0));
}

} // namespace

/// From a key press to the repaint of the combination that the recorder shows, against a bare label that shows a text.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Bundle::registerBundle(QStringLiteral(BLIPSY_BENCH_BUNDLE));

    QWidget window;
    window.resize(860, 680);
    window.show();
    PTKeyComboPanel panel;
    panel.setKeyBindingName(u"Pause/Resume"_s);
    panel.runSheeetForModalWindow_target(&window, nullptr);
    QLabel label(u"Text"_s);
    label.show();
    QCoreApplication::processEvents();

    const Paintings ofRecorder(panel.mComboField);
    const double ours = slowestMilliseconds([&](int press) {
        pressKey(panel.mKeyBcaster, press);
        ofRecorder.waitForNext();
    });
    const Paintings ofLabel(&label);
    const double peer = slowestMilliseconds([&](int press) {
        label.setText(QString::number(press));
        ofLabel.waitForNext();
    });
    Bench::reportAbsolute("hotkeys/slowest-key-press-until-shown-ms", ours, peer, frameMilliseconds);
    panel.cancel();
    return 0;
}

// SPDX-License-Identifier: MIT
#include "Slider.h"

#include <QProxyStyle>
#include <QSignalBlocker>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr int steps = 1000;

/// A press beside the knob brings it there. Paging towards it would send an action for each page.
class KnobJumpsStyle final : public QProxyStyle
{
public:
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returnData) const override
    {
        return hint == SH_Slider_AbsoluteSetButtons ? int(Qt::LeftButton)
                                                    : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

} // namespace

Slider::Slider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    auto* const style = new KnobJumpsStyle;
    style->setParent(this);
    setStyle(style);
    setRange(0, steps);
    setSingleStep(steps / 100);
    setPageStep(steps / 10);
    connect(this, &QSlider::valueChanged, this, [this](int value) {
        m_value = static_cast<float>(value) / steps;
        Q_EMIT acted(this);
    });
}

float Slider::floatValue() const
{
    return m_value;
}

void Slider::setFloatValue(float value)
{
    m_value = std::isnan(value) ? 0 : std::clamp(value, 0.0F, 1.0F);
    const QSignalBlocker blocker(this);
    setValue(static_cast<int>(std::lround(m_value * steps)));
}

QString Slider::stringValue() const
{
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), m_value);
    return QString::fromLatin1(text.data(), result.ptr - text.data());
}

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace contract {

/// 0x00BBGGRR
using Color = std::uint32_t;

/// 1/1440 inch; 15 of them are a pixel at 96 dots an inch.
using Twips = int;

struct Rect {
    Twips left = 0;
    Twips top = 0;
    Twips width = 0;
    Twips height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// What a control tells its form. One listener; none is allowed.
template <class... Arguments> using Event = std::function<void(Arguments...)>;

/// Tells an event's listener, if there is one. The listener may replace or clear the event meanwhile.
template <class... Parameters, class... Arguments>
void fire(const Event<Parameters...>& event, Arguments&&... arguments) {
    if (event) {
        const auto listener = event;
        listener(std::forward<Arguments>(arguments)...);
    }
}

/// What every control offers. A control belongs to its form and lives as long as it.
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    virtual const std::string& name() const = 0;

    /// Relative to the frame or form in which the control stands; exactly what was set, until the user moves it.
    virtual Rect bounds() const = 0;
    /// Negative widths and heights count as 0.
    virtual void setBounds(const Rect& bounds) = 0;

    virtual bool visible() const = 0;
    virtual void setVisible(bool visible) = 0;
    virtual bool enabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    virtual std::string toolTip() const = 0;
    virtual void setToolTip(std::string_view text) = 0;

    /// Gives the control the keyboard.
    virtual void setFocus() = 0;
};

/// Mouse button codes of the tree's events.
enum class MouseButton : std::uint8_t { left = 1, right = 2 };

} // namespace contract

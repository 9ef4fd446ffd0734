// The size of the letters in a window.
#pragma once

namespace vantrel {

class Window;

/// Letters of 10 pixels instead of 11, for all controls of a window: for a window with a place that is too narrow for
/// its text otherwise. To be declared before its controls.
struct SmallLetters {
    explicit SmallLetters(Window& window);
};

}  // namespace vantrel

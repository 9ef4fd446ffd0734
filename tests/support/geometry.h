// Where the controls of a window stand, held against their design.
#pragma once

#include "platform/qt/text.h"
#include "platform/toolkit/control.h"
#include "platform/toolkit/window.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace vantrel {

/// Left, top, width and height as they were designed.
inline std::vector<float> BoxOf(const Control& control) {
    return {control.Left(), control.Top(), control.Width(), control.Height()};
}

/// A control and its place on the window's client area, in twips.
struct Designed {
    std::string control;
    double left, top, width, height;
};

inline void PrintTo(const Designed& it, std::ostream* out) { *out << it.control; }

/// The pixels of the client area that a control covers.
inline QRect OnScreen(const Window& window, const std::string& control) {
    const auto* widget = window.ClientArea()->findChild<QWidget*>(ToQt(control));
    if (!widget) {
        ADD_FAILURE() << "no control " << control;
        return {};
    }
    return {widget->mapTo(window.ClientArea(), QPoint(0, 0)), widget->size()};
}

/// Expects each control where its design puts it: every edge on the pixel that lies nearest.
inline void ExpectDesign(const Window& window, const std::vector<Designed>& design) {
    for (const Designed& it : design) {
        const QRect place = OnScreen(window, it.control);
        EXPECT_EQ(place.left(), ToPixels(it.left)) << it.control;
        EXPECT_EQ(place.top(), ToPixels(it.top)) << it.control;
        EXPECT_EQ(place.left() + place.width(), ToPixels(it.left + it.width)) << it.control;
        EXPECT_EQ(place.top() + place.height(), ToPixels(it.top + it.height)) << it.control;
    }
}

}  // namespace vantrel

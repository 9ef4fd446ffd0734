// Where controls stand.
#pragma once

#include "platform/toolkit/control.h"

#include <QObject>
#include <QWidget>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vantrel {

struct Placed {
    const Control* control;
    Box box;
};

/// Each control has exactly these twips.
inline void ExpectPlaces(const std::vector<Placed>& controls) {
    for (const auto& [control, box] : controls) {
        const std::string name = control->Widget()->objectName().toStdString();
        EXPECT_FLOAT_EQ(control->Left(), box.left) << name;
        EXPECT_FLOAT_EQ(control->Top(), box.top) << name;
        EXPECT_FLOAT_EQ(control->Width(), box.width) << name;
        EXPECT_FLOAT_EQ(control->Height(), box.height) << name;
    }
}

}  // namespace vantrel

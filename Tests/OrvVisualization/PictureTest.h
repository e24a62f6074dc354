#pragma once

#include "OrvVisualization/Image.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvVisualization/ShapesModel.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace rvf {

inline void PrintTo(const Color3ub& color, std::ostream* out) {
    *out << int(color.r()) << ' ' << int(color.g()) << ' ' << int(color.b());
}

} // namespace rvf

namespace orvtest {

inline rvf::Color3ub bytes(const rvf::Color3f& color) {
    return {color.rByte(), color.gByte(), color.bByte()};
}

inline const rvf::Color3ub white(255, 255, 255);
inline const rvf::Color3ub red(255, 0, 0);

inline int difference(const rvf::Color3ub& a, const rvf::Color3ub& b) {
    return std::max({std::abs(a.r() - b.r()), std::abs(a.g() - b.g()), std::abs(a.b() - b.b())});
}

template <class Predicate>
int countPixels(const orv::vis::Image& image, Predicate predicate) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += predicate(image.color(x, y));
        }
    }
    return count;
}

/// A view along -z with nothing but plain colours, in which a pixel of a picture of 40 x 30 is 1 wide and its middle
/// is (0, 0): pixel (x, y) is the square from (x - 20, 15 - y) to the right and down.
class PictureTest : public testing::Test {
protected:
    static constexpr int width = 40;
    static constexpr int height = 30;

    PictureTest() {
        view->camera()->setFromLookAt({0, 0, 50}, {0, 0, 0}, {0, 1, 0});
        view->camera()->setParallel(height);
        view->setEdgesShown(false);
        view->setLit(false);
        view->setLegendShown(false);
        view->addModel(model.get());
    }

    orv::vis::Image render(int pictureWidth = width, int pictureHeight = height) const {
        orv::vis::Image image;
        orv::Str reason;
        EXPECT_TRUE(view->render(pictureWidth, pictureHeight, &image, &reason)) << reason;
        EXPECT_EQ(image.width(), pictureWidth);
        EXPECT_EQ(image.height(), pictureHeight);
        return image;
    }

    orv::PtrRef<orv::vis::View> view = new orv::vis::View;
    orv::PtrRef<ShapesModel> model = new ShapesModel;
    AssertRecorder asserts;
};

} // namespace orvtest

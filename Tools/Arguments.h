#pragma once

#include "LibCore/rvfColor3.h"
#include "OrvCore/Ray.h"
#include "OrvCore/Vec3d.h"
#include "OrvImportCae/FileRelation.h"
#include "OrvVisualization/ColorMap.h"

#include <string>
#include <utility>

namespace orvapp {

// What arguments mean that are more than a word or a number. All of these throw a CommandError that tells how it is
// right; understoodBy() makes a wrong usage of that.

/// "800x600", which vis::Image::isValidSize() allows.
struct PictureSize {
    int width;
    int height;
};
PictureSize parseSize(const std::string& text);

/// "120,45": a pixel, counted from 0 at the upper left corner.
struct Pixel {
    int x;
    int y;
};
Pixel parsePixel(const std::string& text);

/// "1,0,-2.5"
orv::Vec3d parseVector(const std::string& text);

/// From where one looks, and what is up.
struct Viewpoint {
    orv::Vec3d toEye; ///< From what is looked at.
    orv::Vec3d up;
};

/// "iso", "front" and the like, or the direction of the eye as a vector.
Viewpoint parseViewpoint(const std::string& text);

/// "x=2.5", "y=0", "z=-1", or a point and a normal: "0,0,1:1,1,0".
struct Plane {
    orv::Vec3d point;
    orv::Vec3d normal;
};
Plane parsePlane(const std::string& text);

/// "DISPx25" or "DISP", which is the same as "DISPx1".
struct Deformation {
    std::string result;
    double scale;
};
Deformation parseDeformation(const std::string& text);

/// "0,355"
std::pair<double, double> parseRange(const std::string& text);

/// "viridis" or "rainbow".
orv::vis::ColorMap::Kind parseColors(const std::string& text);

/// "series" or "pieces".
orv::imp::cae::FileRelation parseFileRelation(const std::string& text);

/// One colour, or from top to bottom two with a comma between them. A colour is "white", "grey", "black" or "#rrggbb".
std::pair<rvf::Color3f, rvf::Color3f> parseBackground(const std::string& text);

} // namespace orvapp

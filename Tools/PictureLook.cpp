#include "Tools/PictureLook.h"

#include "OrvVisualization/Image.h"
#include "Tools/CommandError.h"

namespace orvapp {

namespace {

orv::vis::ColorMap colorMapOf(const LookOptions& options) {
    orv::vis::ColorMap colors(parseColors(options.colors));
    colors.setBandCount(std::size_t(options.bands));
    if (!options.range.empty()) {
        const auto [minimum, maximum] = parseRange(options.range);
        colors.setFixedRange(minimum, maximum);
    }
    return colors;
}

} // namespace

void setLook(const LookOptions& options, orv::vis::View* view) {
    const auto [top, bottom] = parseBackground(options.background);
    view->setBackground(top, bottom);
    view->setColorMap(colorMapOf(options));
    view->setEdgesShown(options.hasEdges);
    view->setLit(options.hasLight);
}

void checkPictureName(const std::string& path) {
    const std::size_t size = path.size();
    if (size <= 4 || orv::Str(path.substr(size - 4)).toLower() != ".png") {
        throw CommandError(path + ": the name of a picture has to end in .png");
    }
}

void writePicture(const orv::vis::View& view, PictureSize size, const std::string& path) {
    orv::vis::Image image;
    orv::Str reason;
    if (!view.render(size.width, size.height, &image, &reason) || !image.writePng(path, &reason)) {
        throw CommandError(reason.toStdString());
    }
}

} // namespace orvapp

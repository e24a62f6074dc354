#include "Tests/OrvPlot2d/ReferencePicture.h"

#include "OrvVisualization/Image.h"
#include "Tests/Support/TestPaths.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

using orv::vis::Image;

namespace orvtest {
namespace {

constexpr int MOST_DIFFERENCE = 48;
constexpr int MOST_PIXELS = 20;

int differentPixels(const Image& a, const Image& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            int difference = 0;
            for (int channel = 0; channel < 3; ++channel) {
                difference = std::max(difference, std::abs(a.row(y)[3 * x + channel] - b.row(y)[3 * x + channel]));
            }
            count += difference > MOST_DIFFERENCE ? 1 : 0;
        }
    }
    return count;
}

testing::AssertionResult keepCandidate(const std::string& pngFile, const std::string& name, const std::string& why) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const std::filesystem::path candidate = program.parent_path() / (name + ".candidate.png");
    std::filesystem::copy_file(pngFile, candidate, std::filesystem::copy_options::overwrite_existing);
    return testing::AssertionFailure() << name << ".png: " << why << "; look at " << candidate.string();
}

} // namespace

testing::AssertionResult showsReference(const std::string& pngFile, const std::string& name) {
    Image picture;
    orv::Str reason;
    if (!picture.readPng(pngFile, &reason) || picture.format() != Image::Format::RGB) {
        return testing::AssertionFailure() << pngFile << " is no picture without transparency: " << reason;
    }
    Image reference;
    if (!reference.readPng(testDataFolder() + "/plots/" + name + ".png", &reason)) {
        return keepCandidate(pngFile, name, reason.toStdString());
    }
    if (picture.width() != reference.width() || picture.height() != reference.height()) {
        return keepCandidate(pngFile, name, "the size differs");
    }
    const int count = differentPixels(picture, reference);
    if (count > MOST_PIXELS) {
        return keepCandidate(pngFile, name, std::to_string(count) + " pixels differ");
    }
    return testing::AssertionSuccess();
}

} // namespace orvtest

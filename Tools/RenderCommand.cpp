#include "Tools/RenderCommand.h"

#include "Tools/DisplayText.h"
#include "Tools/Output.h"
#include "Tools/ProgressBar.h"
#include "Tools/Table.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace orvapp {

namespace {

/// From where to where values go; from infinity to minus infinity as long as there are none.
struct ValueRange {
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();

    void include(const ValueRange& other) {
        minimum = std::min(minimum, other.minimum);
        maximum = std::max(maximum, other.maximum);
    }

    bool isEmpty() const {
        return minimum > maximum;
    }
};

struct RenderedPicture {
    std::string path;
    std::size_t state;
    ValueRange values;
};

/// "out.png" is "out_0007.png" as the seventh.
std::string numberedPath(const std::string& path, std::size_t number) {
    const std::string digits = std::to_string(number);
    const std::string zeros(digits.size() < 4 ? 4 - digits.size() : 0, '0');
    return path.substr(0, path.size() - 4) + '_' + zeros + digits + path.substr(path.size() - 4);
}

/// Of what is shown now.
ValueRange valuesShown(const Picture& picture) {
    ValueRange values;
    if (picture.result().isValid()) {
        picture.view().scalarRange(&values.minimum, &values.maximum, nullptr);
    }
    return values;
}

class Renderer {
public:
    Renderer(const RenderOptions& options, const Picture& picture)
        : m_options(options), m_picture(picture), m_progress(options.out) {}

    std::vector<RenderedPicture> drawOne() {
        const std::size_t state = m_picture.onlyState();
        m_picture.show(state);
        m_picture.fit();
        return {draw(state, m_options.out)};
    }

    std::vector<RenderedPicture> drawSeries() {
        const std::vector<std::size_t>& states = m_picture.states();
        m_stepCount = 2 * states.size();
        findCommonLook();
        std::vector<RenderedPicture> pictures;
        for (const std::size_t state : states) {
            m_picture.show(state);
            pictures.push_back(draw(state, numberedPath(m_options.out, pictures.size() + 1)));
            m_picture.drop();
            advance();
        }
        return pictures;
    }

private:
    /// One camera and one range of colours for all states, so that nothing but the model moves and changes its colour.
    void findCommonLook() {
        std::optional<orv::vis::Camera> camera;
        ValueRange values;
        for (const std::size_t state : m_picture.states()) {
            m_picture.show(state);
            m_picture.fit();
            values.include(valuesShown(m_picture));
            if (camera) {
                camera->include(*view().camera(), double(m_picture.size().width) / m_picture.size().height);
            } else {
                camera = *view().camera();
            }
            m_picture.drop();
            advance();
        }
        *view().camera() = *camera;
        orv::vis::ColorMap colors = view().colorMap();
        if (!colors.hasFixedRange() && colors.setFixedRange(values.minimum, values.maximum)) {
            view().setColorMap(colors);
        }
    }

    RenderedPicture draw(std::size_t state, const std::string& path) const {
        writePicture(view(), m_picture.size(), path);
        return {path, state, valuesShown(m_picture)};
    }

    void advance() {
        ++m_stepsDone;
        m_progress.setPercent(int(100 * m_stepsDone / m_stepCount));
    }

    orv::vis::View& view() const {
        return m_picture.view();
    }

    const RenderOptions& m_options;
    const Picture& m_picture;
    ProgressBar m_progress;
    std::size_t m_stepCount = 1;
    std::size_t m_stepsDone = 0;
};

std::string renderedText(const Picture& picture, const std::vector<RenderedPicture>& pictures) {
    const bool hasValues = picture.result().isValid();
    std::vector<Table::Column> columns = {{"File"}, {"State"}};
    if (hasValues) {
        columns.insert(columns.end(), {{"Minimum", Table::RIGHT}, {"Maximum", Table::RIGHT}});
    }
    Table table(columns);
    for (const RenderedPicture& rendered : pictures) {
        std::vector<std::string> cells = {rendered.path, picture.stateName(rendered.state)};
        if (hasValues) {
            const bool isEmpty = rendered.values.isEmpty();
            cells.push_back(isEmpty ? "-" : briefNumber(rendered.values.minimum));
            cells.push_back(isEmpty ? "-" : briefNumber(rendered.values.maximum));
        }
        table.addRow(cells);
    }
    const auto [width, height] = picture.size();
    return counted(pictures.size(), "picture") + " of " + std::to_string(width) + " x " + std::to_string(height) +
           " pixels" + (hasValues ? ", " + printable(picture.result().name().toStdString()) : "") + '\n' + table.text();
}

} // namespace

void runRender(const RenderOptions& options) {
    checkPictureName(options.out);
    const Picture picture(options.picture);
    setLook(options.look, &picture.view());
    std::vector<RenderedPicture> pictures;
    {
        Renderer renderer(options, picture);
        pictures = options.isSeries ? renderer.drawSeries() : renderer.drawOne();
    }
    writeStandardOutput(renderedText(picture, pictures));
}

} // namespace orvapp

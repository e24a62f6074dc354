#pragma once

#include "LibCore/rvfColor3.h"
#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvVisualization/Camera.h"
#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/Model.h"

#include <cstddef>
#include <vector>

namespace orv::vis {

class Image;

/// What is looked at, from where, and how it is drawn. Make it with `new` and hold it in a PtrRef.
class ORV_API View : public RefCountedObject {
public:
    /// Without models, with the camera where a new Camera is.
    View();
    ~View() override;

    View(const View&) = delete;
    View& operator=(const View&) = delete;

    /// The view's own, the same object on each call; never null.
    Camera* camera();
    const Camera* camera() const;

    /// Shows a model behind those that are shown already, and keeps it alive; one that is shown already stays where it
    /// is. Asserts "model"; null is not shown.
    void addModel(Model* model);

    /// Lets go of a model; one that is not shown is no mistake. Later ones move up by one.
    void removeModel(const Model* model);

    std::size_t modelCount() const;

    /// Asserts "index < modelCount()"; null behind the failed assertion.
    Model* model(std::size_t index) const;

    /// What is behind the models: from a colour at the top of the picture evenly to one at the bottom. White at first.
    const rvf::Color3f& backgroundTop() const;
    const rvf::Color3f& backgroundBottom() const;
    /// One colour all over.
    void setBackground(const rvf::Color3f& color);
    void setBackground(const rvf::Color3f& top, const rvf::Color3f& bottom);

    /// The colours of scalars, and their range when it is a fixed one.
    const ColorMap& colorMap() const;
    void setColorMap(const ColorMap& colorMap);

    /// Whether the edges of elements are drawn as lines; at first they are.
    bool areEdgesShown() const;
    void setEdgesShown(bool areShown);

    /// Whether the legend of the scalar is drawn, where there is one; at first it is.
    bool isLegendShown() const;
    void setLegendShown(bool isShown);

    /// Whether surfaces are darker the less they look to a light over the viewer's left shoulder; at first they are.
    /// Without light the colours are exactly those of the colour map.
    bool isLit() const;
    void setLit(bool isLit);

    /// The rays along each side of a pixel that has an outline or a border between colours in it, so 4 means 16 rays
    /// there; half as many along a side where the colours differ a little only. 1 for none but the one through the
    /// middle of each pixel. 4 at first.
    int antialiasing() const;
    /// @return false, and nothing changes, when it is not from 1 to 8
    bool setAntialiasing(int raysPerSide);

    /// Moves the camera, without turning it, so that all that the models show just fits into a picture, with a margin
    /// of a twentieth. Where a legend is to be drawn, and the models would be under it, they are moved to the right of
    /// it. Brings their shapes up to date; a model that fails shows nothing.
    /// @param width, height of the picture, in pixels
    /// @return false, and the camera stays, when nothing is shown or Image::isValidSize() is false
    bool fit(int width, int height);

    /// From where to where the scalars go that are shown, and so the colours when their range is not a fixed one.
    /// Brings the shapes of the models up to date before.
    /// @param minimum, maximum not written when nothing with a number is shown
    /// @param reason told when a model cannot be brought up to date; may be null
    /// @return false when nothing with a number is shown or a model fails
    bool scalarRange(double* minimum, double* maximum, Str* reason) const;

    /// Draws the picture, on the processor alone: rays go from the eye through each pixel into the scenes of the
    /// models, so what is seen is what a RayScene finds. Brings their shapes up to date before.
    ///
    /// Scalars of points are interpolated on each face and then coloured; where one of its corners is undefined, the
    /// face has the colour of undefined values. Scalars of primitives colour them evenly. Without a fixed range the
    /// colours go from the smallest to the largest number on what is shown, hidden or not. Shapes without scalars have
    /// their own colours.
    ///
    /// Edges of elements are thin dark lines; they are paler where elements are only a few pixels wide, and vanish
    /// where they would cover them. The legend is that of the first model that has scalars, for all of them. A view
    /// without models is a picture of the background.
    ///
    /// A picture of two million pixels takes about half a second, on one thread.
    /// @param image filled on success, else left as it is. Asserts "image"; false behind the failed assertion
    /// @param reason told when it fails: a size for which Image::isValidSize() is false, a model that cannot be brought
    ///        up to date, or want of memory; may be null
    bool render(int width, int height, Image* image, Str* reason) const;

private:
    bool updateShapes(Str* reason) const;

    Camera m_camera;
    std::vector<PtrRef<Model>> m_models;
    rvf::Color3f m_backgroundTop = {1.0F, 1.0F, 1.0F};
    rvf::Color3f m_backgroundBottom = {1.0F, 1.0F, 1.0F};
    ColorMap m_colorMap;
    bool m_areEdgesShown = true;
    bool m_isLegendShown = true;
    bool m_isLit = true;
    int m_antialiasing = 4;
};

} // namespace orv::vis

#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvVisualization/Camera.h"
#include "OrvVisualization/Model.h"

#include <cstddef>
#include <vector>

namespace orv::vis {

/// What is looked at, and from where. Make it with `new` and hold it in a PtrRef.
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

private:
    Camera m_camera;
    std::vector<PtrRef<Model>> m_models;
};

} // namespace orv::vis

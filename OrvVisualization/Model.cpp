#include "OrvVisualization/Model.h"

namespace orv::vis {

Model::~Model() = default;

} // namespace orv::vis

#pragma once

#include "OrvCore/Str.h"

#include <vector>

namespace orv {
class PropertySetCollection;
}

namespace orv::vis {
class View;
}

namespace orv::ug {

class UnstructGridModel;

// What a capture stores, and the way back. All of it is in property sets whose class types begin with "situation.".

void removeCapturedSets(PropertySetCollection* collection);
bool hasCapturedSets(const PropertySetCollection& collection);

/// Appends sets for the state, results, shape, parts and cutting planes that the model shows; none when it has no data
/// source.
void captureModel(const UnstructGridModel& model, PropertySetCollection* collection);
/// Shows it again. The model stays as it is when nothing of a model has been captured.
/// @param missing gets a text for each thing that the model does not have
void applyToModel(const PropertySetCollection& collection, UnstructGridModel* model, std::vector<Str>* missing);

/// Appends sets for the camera and for how the view draws.
void captureView(const vis::View& view, PropertySetCollection* collection);
/// What is not in the sets, or is in them with another kind of value, stays as it is in the view.
/// @param missing gets a text for what makes no view
void applyToView(const PropertySetCollection& collection, vis::View* view, std::vector<Str>* missing);

} // namespace orv::ug

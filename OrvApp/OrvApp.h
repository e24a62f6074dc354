#pragma once

/// @file
/// @page OrvApp The application layer
///
/// Catalogues of the process, through which a program opens results and asks for them:
///
/// - orv::app::Models: the open models, and which is current
/// - orv::app::States: the states of the current model
/// - orv::app::Parts: the parts of the current state
/// - orv::app::Results: the results of the current state, and their values
/// - orv::app::Views: the views, which is current, and the orv::app::Selection of what has been picked in each
/// - orv::app::Situations: saved pictures of what is shown, on disk, in archives and for recovery after a crash
/// - orv::app::Plots: plots, and curves of results over the states or along a surface
///
/// Each is reached by instance(). States, Parts and Results keep next to nothing: they ask the current model anew at
/// each call, so changing the current model changes what they see. orv::app::AppComponent binds the layer to the core's
/// instance, which chooses what becomes of failed assertions and where messages go; the catalogues work without it too.
///
/// How far the first node of the first part moves in each state:
/// @code
/// orv::ug::Error error;
/// if (!orv::app::Models::instance()->open("bracket.frd", &error)) {
///     std::cerr << error.message().toStdString() << '\n';
/// }
/// auto* states = orv::app::States::instance();
/// for (size_t i = 0; i < states->count(); ++i) {
///     states->setCurrentIndex(i);
///     const auto* motion = orv::app::Results::instance()->currentDataPartDisplacement("DISP");
///     std::cout << states->currentInfo().referenceValue() << ": " << (motion ? motion->value(0).z() : 0.0) << '\n';
/// }
/// @endcode
///
/// New results are described by algebra on results, such as `vonMises(stress) / 250.0`, see OrvApp/ResultOperators.h,
/// and by functions of the application's own, see orv::app::MathFunctionCallBack. They are computed by generators,
/// which stand behind a custom orv::ug::ResultInfo:
///
/// - orv::app::NodeToElementResultGenerator and orv::app::ElementToNodeResultGenerator: the other mapping, by averaging
/// - orv::app::MinMaxAvgValueResultGenerator: the smallest, largest or average number of a part or of all parts
///
/// orv::app::Results::add() makes such a result one of the model's: listed, found by name and loaded.
///
/// Mistakes of the calling program are assertions (rvf::Assert), failures of data come back as a null pointer, false or
/// an undefined record, with the reason in an orv::ug::Error or in the log "orv.comp.app". One thread at a time.

#include "OrvApp/AppComponent.h"
#include "OrvApp/ElementToNodeResultGenerator.h"
#include "OrvApp/MathFunctionCallBack.h"
#include "OrvApp/MinMaxAvgValueResultGenerator.h"
#include "OrvApp/Models.h"
#include "OrvApp/NodeToElementResultGenerator.h"
#include "OrvApp/Parts.h"
#include "OrvApp/Plots.h"
#include "OrvApp/ResultOperators.h"
#include "OrvApp/Results.h"
#include "OrvApp/Selection.h"
#include "OrvApp/Situations.h"
#include "OrvApp/States.h"
#include "OrvApp/Views.h"
#include "OrvCore/OrvCore.h"
#include "OrvPlot2d/OrvPlot2d.h"
#include "OrvUnstructGrid/OrvUnstructGrid.h"
#include "OrvVisualization/OrvVisualization.h"

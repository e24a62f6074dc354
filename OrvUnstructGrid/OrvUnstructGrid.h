#pragma once

/// @page OrvUnstructGrid OrvUnstructGrid: the data model
///
/// Results on unstructured grids, namespace `orv::ug`. From a model down to its values:
///
/// | owner | gives | through |
/// |---|---|---|
/// | UnstructGridModel | its DataSource and its ModelSpec | `dataSource()`, `modelSpec()` |
/// | DataSource | the DataSourceDirectory, a DataState | `directory()`, `currentState(model)`, `state(index)` |
/// | DataState | DataGeometry by index, the DataResultGroup of a geometry | `geometry(i)`, `results(geometry)` |
/// | DataGeometry | DataPart by index | `part(i)` |
/// | DataPart | DataNodes, DataElements | `nodes()`, `elements()` |
/// | DataResultGroup | the loaded results of each kind | `scalar(i)` and its like |
/// | DataResultScalar and its like | one part's values | `part(i)` |
///
/// The directory lists what there is, states, parts and results, without loading it. Values come on demand: put
/// ResultInfo handles from the directory into a DataStateSpec and hand it to DataSourceInterface::loadDataState(),
/// which files (DataSourceLazy) and data in memory (DataSourceMemory) answer alike:
///
/// @code
/// orv::ug::DataStateSpec spec;
/// spec.setResultIds({source->directory()->findScalarResultInfo(1)});
/// orv::ug::Error error;
/// if (!source->loadDataState(stateId, spec, &error)) {
///     std::cerr << error.message() << '\n';
/// }
/// @endcode
///
/// A mesh may wait in its file as well, until a load, or whoever asks a part for its nodes or elements, needs it.
/// DataState::readGeometries() has it read at a time of the caller's choice and tells why when it cannot be.
///
/// A pointer does not own: states and values live in their data source. Values of states that are not current may be
/// dropped under a byte budget, so ask anew after a change of state.
///
/// A custom result is a ResultInfo with arguments and a CustomResultGenerator, which computes its values when they are
/// loaded. Register it with DataSourceDirectory::setCustomResultInfo() first.
///
/// What a model looks like is made by UnstructGridModel::updateShapes(), for orv::vis, and what a ray meets of it is
/// told by UnstructGridModel::rayIntersect(): surfaces of the visible parts and the sections of each CuttingPlane. A
/// SurfacePathQuery lays a path over these through what rays have hit, and takes a scalar along it.
///
/// A Situation captures what a model and a view show, SituationIo keeps it in a file, and Situation::applyTo() shows it
/// again.
///
/// A failure of data comes back as false, null or an undefined record, with the reason in an Error where one is passed.
/// A caller's mistake is an assertion. Nothing here starts a thread or takes a lock.

#include "OrvUnstructGrid/Convert.h"
#include "OrvUnstructGrid/CustomResultFunction.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/CZipArchive.h"
#include "OrvUnstructGrid/DataElements.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/DataNodes.h"
#include "OrvUnstructGrid/DataPart.h"
#include "OrvUnstructGrid/DataPartValues.h"
#include "OrvUnstructGrid/DataResult.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataSourceLazy.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataSourceZTF.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/ElementsQuery.h"
#include "OrvUnstructGrid/ElementType.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/ModelSpec.h"
#include "OrvUnstructGrid/PartInfo.h"
#include "OrvUnstructGrid/Progress.h"
#include "OrvUnstructGrid/ProgressMeter.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/ResultsQuery.h"
#include "OrvUnstructGrid/ResultsQueryItem.h"
#include "OrvUnstructGrid/ResultsQueryResult.h"
#include "OrvUnstructGrid/ResultType.h"
#include "OrvUnstructGrid/SelectionKeeper.h"
#include "OrvUnstructGrid/SimulationInfo.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvUnstructGrid/SituationIo.h"
#include "OrvUnstructGrid/SituationSelection.h"
#include "OrvUnstructGrid/StateGroupInfo.h"
#include "OrvUnstructGrid/StateInfo.h"
#include "OrvUnstructGrid/SurfacePathQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZTFWriter.h"
#include "OrvUnstructGrid/ZTFxCaseInfo.h"
#include "OrvUnstructGrid/ZTFxWriter.h"

#pragma once

#include "OrvImportCae/ReaderInfo.h"

#include <string>
#include <vector>

namespace orvapp {

struct CurvesReport;
struct EnvelopeReport;
struct ModelReport;
struct PickReport;
struct SituationsReport;
struct ValuesReport;

/// The reports as JSON for scripts, indented, with a line end. The keys and their order are an interface: scripts
/// depend on them. Undefined numbers are null.
/// One model for each report.
std::string infoJson(const std::vector<ModelReport>& reports);
std::string valuesJson(const ValuesReport& report);
std::string envelopeJson(const EnvelopeReport& report);
std::string curvesJson(const CurvesReport& report);
std::string situationsJson(const SituationsReport& report);
std::string pickJson(const PickReport& report);
std::string formatsJson(const std::vector<orv::imp::cae::FormatInfo>& formats);

} // namespace orvapp

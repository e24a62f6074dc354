#pragma once

#include <vector>

namespace orv::imp::cae {

class EnSightFile;
struct EnSightPart;
struct EnSightVariable;

/// Adds the values of a variable to the data of those parts that it has any for. What has no value is NaN. Of symmetric
/// tensors XX YY ZZ XY XZ YZ become XX YY ZZ XY YZ XZ, which is VTK's order.
bool readEnSightValues(EnSightFile* file, const EnSightVariable& variable, const std::vector<EnSightPart>& parts);

} // namespace orv::imp::cae

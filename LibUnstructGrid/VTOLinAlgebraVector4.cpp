#include "LibUnstructGrid/VTOLinAlgebraVector4.h"

#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"

void VTVector4::TransformPoint(const VTMatrix4& matrix) {
    const double* v = matrix.v;
    Set(v[0] * x + v[4] * y + v[8] * z + v[12], v[1] * x + v[5] * y + v[9] * z + v[13],
        v[2] * x + v[6] * y + v[10] * z + v[14], v[3] * x + v[7] * y + v[11] * z + v[15]);
}

#include "OrvCore/SymmetricTensor.h"

#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathTensor.h"

namespace orv {

void SymmetricTensor::set(double xx, double yy, double zz, double xy, double yz, double zx) {
    m_components[0] = xx;
    m_components[1] = yy;
    m_components[2] = zz;
    m_components[3] = xy;
    m_components[4] = yz;
    m_components[5] = zx;
}

double SymmetricTensor::vonMises() const {
    return VTComputeVonMises(m_components, 6);
}

double SymmetricTensor::firstPrincipalValue() const {
    return VTComputePrincipal(m_components, 6, 0);
}

double SymmetricTensor::secondPrincipalValue() const {
    return VTComputePrincipal(m_components, 6, 1);
}

double SymmetricTensor::thirdPrincipalValue() const {
    return VTComputePrincipal(m_components, 6, 2);
}

Vec3d SymmetricTensor::firstPrincipalVector() const {
    return principalVector(0);
}

Vec3d SymmetricTensor::secondPrincipalVector() const {
    return principalVector(1);
}

Vec3d SymmetricTensor::thirdPrincipalVector() const {
    return principalVector(2);
}

Vec3d SymmetricTensor::principalVector(int number) const {
    VTVector vectors[3];
    VTComputePrincipals3D(m_components, nullptr, vectors);
    return Vec3d(vectors[number].x, vectors[number].y, vectors[number].z);
}

} // namespace orv

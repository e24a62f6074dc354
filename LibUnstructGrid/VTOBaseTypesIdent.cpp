#include "LibUnstructGrid/VTOBaseTypesIdent.h"

#include <tuple>

namespace {

bool isSet(int iID) {
    return iID >= 0;
}

bool idsMatch(int iIDA, int iIDB, bool bWildcards) {
    return iIDA == iIDB || (bWildcards && (!isSet(iIDA) || !isSet(iIDB)));
}

} // namespace

VTIndexID::VTIndexID(int iFirstID, int iSecondID) : iFirst(iFirstID), iSecond(iSecondID) {}

void VTIndexID::Set(int iFirstID, int iSecondID) {
    *this = VTIndexID(iFirstID, iSecondID);
}

bool VTIndexID::IsValid(bool bBoth) const {
    return bBoth ? isSet(iFirst) && isSet(iSecond) : isSet(iFirst) || isSet(iSecond);
}

VTPartID::VTPartID(int iGeometry, int iPart) : iGeometryID(iGeometry), iPartID(iPart) {}

bool VTPartID::operator<(const VTPartID& other) const {
    return std::tie(iGeometryID, iPartID) < std::tie(other.iGeometryID, other.iPartID);
}

void VTPartID::Set(int iGeometry, int iPart) {
    *this = VTPartID(iGeometry, iPart);
}

void VTPartID::SetInvalid() {
    *this = VTPartID();
}

bool VTPartID::IsValid() const {
    return isSet(iGeometryID) && isSet(iPartID);
}

bool VTPartID::IsEqual(const VTPartID& other, bool bWildcards) const {
    return idsMatch(iGeometryID, other.iGeometryID, bWildcards) && idsMatch(iPartID, other.iPartID, bWildcards);
}

VTFrameSetPartIdent::VTFrameSetPartIdent(int iFrameSet, int iPart) : iFrameSetID(iFrameSet), iPartID(iPart) {}

bool VTFrameSetPartIdent::operator<(const VTFrameSetPartIdent& other) const {
    return std::tie(iFrameSetID, iPartID) < std::tie(other.iFrameSetID, other.iPartID);
}

void VTFrameSetPartIdent::Set(int iFrameSet, int iPart) {
    *this = VTFrameSetPartIdent(iFrameSet, iPart);
}

bool VTFrameSetPartIdent::IsValid() const {
    return isSet(iFrameSetID) && isSet(iPartID);
}

VTPartInstanceID::VTPartInstanceID(int iThird, int iFourth, int iGeometryID, int iPartID)
    : partID(iGeometryID, iPartID), iThirdID(iThird), iFourthID(iFourth) {}

VTPartInstanceID::VTPartInstanceID(const VTPartID& part) : partID(part) {}

VTPartInstanceID::VTPartInstanceID(const VTPartID& part, int iThird, int iFourth)
    : partID(part), iThirdID(iThird), iFourthID(iFourth) {}

void VTPartInstanceID::Set(int iThird, int iFourth, int iGeometryID, int iPartID) {
    *this = VTPartInstanceID(iThird, iFourth, iGeometryID, iPartID);
}

void VTPartInstanceID::Set(const VTPartInstanceID& other) {
    *this = other;
}

void VTPartInstanceID::Set(const VTPartID& part) {
    *this = VTPartInstanceID(part);
}

void VTPartInstanceID::Set(const VTPartID& part, int iThird, int iFourth) {
    *this = VTPartInstanceID(part, iThird, iFourth);
}

void VTPartInstanceID::SetInvalid() {
    *this = VTPartInstanceID();
}

bool VTPartInstanceID::IsValid(bool bCheckThird, bool bCheckFourth) const {
    return partID.IsValid() && (!bCheckThird || isSet(iThirdID)) && (!bCheckFourth || isSet(iFourthID));
}

bool VTPartInstanceID::IsEqual(const VTPartInstanceID& other, bool bCompareThird, bool bCompareFourth,
                               bool bWildcards) const {
    return partID.IsEqual(other.partID, bWildcards) &&
           (!bCompareThird || idsMatch(iThirdID, other.iThirdID, bWildcards)) &&
           (!bCompareFourth || idsMatch(iFourthID, other.iFourthID, bWildcards));
}

VTPartItem::VTPartItem(const VTPartInstanceID& partInstance, int iIndex, unsigned char ubDetail)
    : partInstanceID(partInstance), iItemIndex(iIndex), ubItemDetail(ubDetail) {}

void VTPartItem::Set(const VTPartInstanceID& partInstance, int iIndex, unsigned char ubDetail) {
    *this = VTPartItem(partInstance, iIndex, ubDetail);
}

void VTPartItem::SetInvalid() {
    *this = VTPartItem();
}

bool VTPartItem::IsValid(VTItemType eItemType) const {
    if (eItemType <= VT_ITEM_NONE) {
        return false;
    }
    if (eItemType >= VT_ITEM_FREE_1) {
        return true;
    }
    if (!partInstanceID.partID.IsValid()) {
        return false;
    }
    if (eItemType == VT_ITEM_PART) {
        return true;
    }
    return isSet(iItemIndex) && (eItemType < VT_ITEM_DETAILED_1 || ubItemDetail < 255);
}

bool VTPartItem::IsEqual(const VTPartItem& other, bool bCompareThird, bool bCompareFourth, bool bWildcards) const {
    return partInstanceID.IsEqual(other.partInstanceID, bCompareThird, bCompareFourth, bWildcards) &&
           idsMatch(iItemIndex, other.iItemIndex, bWildcards) && (bWildcards || ubItemDetail == other.ubItemDetail);
}

bool VTResultID::operator<(const VTResultID& other) const {
    return std::tie(iID, iSectionID) < std::tie(other.iID, other.iSectionID);
}

void VTResultID::Set(int iResultID, int iSection) {
    *this = VTResultID(iResultID, iSection);
}

void VTResultID::Reset() {
    *this = VT_NO_RESULT_ID;
}

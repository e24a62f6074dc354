#pragma once

#include "LibCore/rvfExport.h"

// Identifiers are plain ints. -1 means unset; a field is valid when it is at or above 0.

/// Two ids of any kind.
struct ORV_API VTIndexID {
    int iFirst = -1;
    int iSecond = -1;

    VTIndexID() = default;
    VTIndexID(int iFirstID, int iSecondID);

    bool operator==(const VTIndexID&) const = default;
    void Set(int iFirstID, int iSecondID);

    /// With `bBoth`, both fields must be valid; without it, one of them is enough.
    bool IsValid(bool bBoth) const;
};

/// A part of a geometry.
struct ORV_API VTPartID {
    int iGeometryID = -1;
    int iPartID = -1;

    VTPartID() = default;
    VTPartID(int iGeometry, int iPart);

    bool operator==(const VTPartID&) const = default;
    /// By geometry id, then by part id.
    bool operator<(const VTPartID& other) const;

    void Set(int iGeometry, int iPart);
    void SetInvalid();
    bool IsValid() const;

    /// With `bWildcards`, a negative field on either side matches anything. Without it -1 equals only -1.
    bool IsEqual(const VTPartID& other, bool bWildcards) const;
};

/// A part of a set of frames.
struct ORV_API VTFrameSetPartIdent {
    int iFrameSetID = -1;
    int iPartID = -1;

    VTFrameSetPartIdent() = default;
    VTFrameSetPartIdent(int iFrameSet, int iPart);

    bool operator==(const VTFrameSetPartIdent&) const = default;
    /// By frame set id, then by part id.
    bool operator<(const VTFrameSetPartIdent& other) const;

    void Set(int iFrameSet, int iPart);
    bool IsValid() const;
};

/// A part with two further ids, which tell its instances apart. What they count belongs to the data model in use.
struct ORV_API VTPartInstanceID {
    VTPartID partID;
    int iThirdID = -1;
    int iFourthID = -1;

    VTPartInstanceID() = default;
    /// Mind the order: the third and the fourth id come first, the ids of the part last.
    VTPartInstanceID(int iThird, int iFourth, int iGeometryID, int iPartID);
    /// The third and the fourth id stay unset.
    explicit VTPartInstanceID(const VTPartID& part);
    VTPartInstanceID(const VTPartID& part, int iThird, int iFourth);

    bool operator==(const VTPartInstanceID&) const = default;

    /// Mind the order: the third and the fourth id come first, the ids of the part last.
    void Set(int iThird, int iFourth, int iGeometryID, int iPartID);
    void Set(const VTPartInstanceID& other);
    /// The third and the fourth id become unset.
    void Set(const VTPartID& part);
    void Set(const VTPartID& part, int iThird, int iFourth);
    void SetInvalid();

    /// The part must be valid, and so must the third and the fourth id when their flag is set.
    bool IsValid(bool bCheckThird, bool bCheckFourth) const;

    /// Compares the part, and the third and the fourth id when their flag is set. With `bWildcards`, a negative field
    /// on either side matches anything.
    bool IsEqual(const VTPartInstanceID& other, bool bCompareThird, bool bCompareFourth, bool bWildcards) const;
};

/// The kinds of item, in four groups: what a VTPartItem needs to be valid depends on the group alone. Which item each
/// number stands for belongs to the data model in use.
enum VTItemType : int {
    VT_ITEM_NONE = 0,
    VT_ITEM_INDEXED_1 = 1, ///< First of four kinds that need a part and an item index.
    VT_ITEM_INDEXED_2 = 2,
    VT_ITEM_INDEXED_3 = 3,
    VT_ITEM_INDEXED_4 = 4,
    VT_ITEM_DETAILED_1 = 5, ///< First of four kinds that need an item detail as well.
    VT_ITEM_DETAILED_2 = 6,
    VT_ITEM_DETAILED_3 = 7,
    VT_ITEM_DETAILED_4 = 8,
    VT_ITEM_PART = 9,    ///< Needs a part alone.
    VT_ITEM_FREE_1 = 10, ///< First of four kinds that need nothing.
    VT_ITEM_FREE_2 = 11,
    VT_ITEM_FREE_3 = 12,
    VT_ITEM_FREE_4 = 13
};

/// An item of a part instance, such as an element, with a detail of it, such as one of its surfaces.
struct ORV_API VTPartItem {
    VTPartInstanceID partInstanceID;
    int iItemIndex = -1;
    unsigned char ubItemDetail = 255; ///< 255 when unset.

    VTPartItem() = default;
    VTPartItem(const VTPartInstanceID& partInstance, int iIndex, unsigned char ubDetail);

    bool operator==(const VTPartItem&) const = default;
    void Set(const VTPartInstanceID& partInstance, int iIndex, unsigned char ubDetail);
    void SetInvalid();

    /// Whether the item has what its kind needs. VT_ITEM_NONE is never valid; kinds 10 and above always are.
    bool IsValid(VTItemType eItemType) const;

    /// Compares the part instance with all three flags, and the item index. With `bWildcards`, a negative index on
    /// either side matches anything, and the detail is not looked at.
    bool IsEqual(const VTPartItem& other, bool bCompareThird, bool bCompareFourth, bool bWildcards) const;
};

/// A result and, where it has several, a section of it.
struct ORV_API VTResultID {
    int iID = -1;
    int iSectionID = -1;

    constexpr VTResultID() = default;
    constexpr VTResultID(int iResultID, int iSection) : iID(iResultID), iSectionID(iSection) {}

    bool operator==(const VTResultID&) const = default;
    /// By result id, then by section id.
    bool operator<(const VTResultID& other) const;

    void Set(int iResultID, int iSection);
    /// Back to VT_NO_RESULT_ID.
    void Reset();
};

/// No result. Sorts before every valid id.
inline constexpr VTResultID VT_NO_RESULT_ID(-1, -1);

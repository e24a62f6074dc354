#include "Tools/ResultWords.h"

#include <gmock/gmock.h>

using namespace orv::ug;
using namespace orvapp;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ResultWords, SpellTypes) {
    EXPECT_STREQ(typeWord(SCALAR), "scalar");
    EXPECT_STREQ(typeWord(VECTOR), "vector");
    EXPECT_STREQ(typeWord(DISPLACEMENT), "displacement");
    EXPECT_STREQ(typeWord(SYMMETRIC_TENSOR), "tensor");
    EXPECT_STREQ(typeWord(NO_RESULT_TYPE), "unknown");
}

TEST(ResultWords, SpellMappings) {
    EXPECT_STREQ(mappingWord(PER_NODE), "node");
    EXPECT_STREQ(mappingWord(PER_ELEMENT), "element");
    EXPECT_STREQ(mappingWord(PER_ELEMENT_NODE), "element_node");
    EXPECT_STREQ(mappingWord(PER_ELEMENT_SURFACE), "element_surface");
    EXPECT_STREQ(mappingWord(UNKNOWN_MAPPING), "unknown");
}

TEST(ResultWords, AreUnderstoodAgain) {
    for (const auto type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        EXPECT_EQ(typeOfWord(typeWord(type)), type);
    }
    for (const auto mapping : {PER_NODE, PER_ELEMENT, PER_ELEMENT_NODE, PER_ELEMENT_SURFACE}) {
        EXPECT_EQ(mappingOfWord(mappingWord(mapping)), mapping);
    }
    for (const char* word : {"unknown", "", "Scalar", "nodes"}) {
        EXPECT_EQ(typeOfWord(word), NO_RESULT_TYPE);
        EXPECT_EQ(mappingOfWord(word), UNKNOWN_MAPPING);
    }
}

TEST(ResultWords, SpellReferenceTypes) {
    EXPECT_STREQ(referenceTypeWord(StateInfo::TIME), "time");
    EXPECT_STREQ(referenceTypeWord(StateInfo::FREQUENCY), "frequency");
    EXPECT_STREQ(referenceTypeWord(StateInfo::LOAD_CASE), "loadcase");
}

TEST(ResultWords, SpellPlaces) {
    EXPECT_STREQ(placeWord(PER_NODE), "node");
    EXPECT_STREQ(placeWord(PER_ELEMENT), "element");
    EXPECT_STREQ(placeWord(PER_ELEMENT_NODE), "element");
    EXPECT_STREQ(placeWord(PER_ELEMENT_SURFACE), "element");
}

TEST(ResultWords, NameComponents) {
    EXPECT_THAT(componentNames(SCALAR), ElementsAre("value"));
    EXPECT_THAT(componentNames(VECTOR), ElementsAre("X", "Y", "Z"));
    EXPECT_THAT(componentNames(DISPLACEMENT), ElementsAre("X", "Y", "Z"));
    EXPECT_THAT(componentNames(SYMMETRIC_TENSOR), ElementsAre("XX", "YY", "ZZ", "XY", "YZ", "ZX"));
    EXPECT_THAT(componentNames(NO_RESULT_TYPE), IsEmpty());
}

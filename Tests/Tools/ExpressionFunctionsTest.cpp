#include "Tools/ExpressionFunctions.h"

#include <gtest/gtest.h>

#include <set>

using namespace orvapp;

TEST(ExpressionFunctions, AreFoundByName) {
    std::set<std::string> names;
    for (const ExpressionFunction& function : expressionFunctions()) {
        EXPECT_EQ(findExpressionFunction(function.name), &function);
        EXPECT_TRUE(names.insert(function.name).second) << function.name << " is there twice";
    }
    EXPECT_EQ(findExpressionFunction("vonmises"), nullptr);
    EXPECT_EQ(findExpressionFunction(""), nullptr);
}

TEST(ExpressionFunctions, HaveWhatTheParserAndTheHelpNeed) {
    for (const ExpressionFunction& function : expressionFunctions()) {
        EXPECT_NE(function.ofResults == nullptr, function.ofNumber == nullptr) << function.name;
        EXPECT_FALSE(function.types.empty()) << function.name;
        EXPECT_EQ(std::string(function.parameters).front(), '(') << function.name;
        // A line of help: two blanks, 27 columns, a blank, and the meaning.
        EXPECT_LE(function.signature().size(), 27u);
        EXPECT_LE(std::string(function.meaning).size(), 70u) << function.name;
    }
}

TEST(ExpressionFunctions, ShowHowTheyAreCalled) {
    EXPECT_EQ(findExpressionFunction("extractComponent")->signature(), "extractComponent(A, INDEX)");
    EXPECT_EQ(findExpressionFunction("principals")->signature(), "principals(TENSOR)[0]");
}

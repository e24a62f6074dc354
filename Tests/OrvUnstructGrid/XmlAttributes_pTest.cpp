#include "OrvUnstructGrid/XmlAttributes_p.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace orv;
using namespace orv::ug;

namespace {

constexpr const char* COLOR_WORDS[] = {"red", "green", "blue"};
const EnumWords COLORS(COLOR_WORDS, 5);

/// One element <item> in <list>, with one attribute.
class XmlAttributes : public testing::Test {
protected:
    pugi::xml_node parse(const std::string& attribute) {
        m_text = "<list><item " + attribute + "/></list>";
        EXPECT_TRUE(m_reader.parse(m_text, "list", &m_document, &m_error)) << m_error.message();
        return m_document.document_element().first_child();
    }

    // The element begins with the byte 7, behind "<list><".
    void expectError(const std::string& problem) {
        EXPECT_EQ(m_error.message(), Str("/a/b.xml, byte 7: <item>" + problem));
    }

    std::string m_text; ///< That the document points into.
    pugi::xml_document m_document;
    Error m_error;
    const XmlAttributeReader m_reader{Str("/a/b.xml")};
};

TEST(EnumWords, AreNumberedFromTheFirst) {
    EXPECT_EQ(COLORS.wordOf(5), "red");
    EXPECT_EQ(COLORS.wordOf(7), "blue");
    EXPECT_EQ(COLORS.wordOf(8), "blue");
    EXPECT_EQ(COLORS.wordOf(4), "blue");
    int value = 0;
    EXPECT_TRUE(COLORS.findValue("green", &value));
    EXPECT_EQ(value, 6);
    EXPECT_FALSE(COLORS.findValue("Green", &value));
    EXPECT_EQ(COLORS.list(), "red, green, blue");
}

TEST_F(XmlAttributes, WhatIsPutComesBack) {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("list");
    pugi::xml_node item = root.append_child("item");
    putText(item, "text", "a < \"b\"\n\t c ");
    putNumber(item, "number", -9007199254740993);
    putReal(item, "real", 0.1);
    putReals(item, "reals", std::vector<double>{-0.0, INFINITY});
    putNumbers(item, "numbers", std::vector<int>{3, 0, 5});
    putNumbers(item, "none", std::vector<int>());
    m_text = textOf(document);

    ASSERT_TRUE(m_reader.parse(m_text, "list", &m_document, &m_error)) << m_error.message();
    item = m_document.document_element().first_child();
    std::string text;
    EXPECT_TRUE(m_reader.readText(item, "text", &text, &m_error));
    EXPECT_EQ(text, "a < \"b\"\n\t c ");
    std::int64_t number = 0;
    EXPECT_TRUE(m_reader.readNumber(item, "number", -9007199254740993, 0, &number, &m_error));
    EXPECT_EQ(number, -9007199254740993);
    double real = 0;
    EXPECT_TRUE(m_reader.readReal(item, "real", &real, &m_error));
    EXPECT_EQ(real, 0.1);
    std::vector<double> reals;
    EXPECT_TRUE(m_reader.readReals(item, "reals", 2, &reals, &m_error));
    EXPECT_EQ(reals, (std::vector<double>{0, INFINITY}));
    EXPECT_TRUE(std::signbit(reals[0]));
    std::vector<int> numbers;
    EXPECT_TRUE(m_reader.readNumbers(item, "numbers", 3, 5, &numbers, &m_error));
    EXPECT_EQ(numbers, (std::vector<int>{3, 0, 5}));
    EXPECT_TRUE(m_reader.readNumbers(item, "none", XmlAttributeReader::ANY_COUNT, 5, &numbers, &m_error));
    EXPECT_TRUE(numbers.empty());
}

TEST_F(XmlAttributes, WhatIsNoXmlIsTold) {
    m_text = "<list><item>";
    EXPECT_FALSE(m_reader.parse(m_text, "list", &m_document, &m_error));
    EXPECT_THAT(m_error.message().toStdString(),
                testing::MatchesRegex("/a/b.xml, byte [0-9]+: not well-formed XML: .+"));
    m_text = "<html/>";
    const XmlAttributeReader ofEntry(Str("/a/b.zip"), "c.xml");
    EXPECT_FALSE(ofEntry.parse(m_text, "list", &m_document, &m_error));
    EXPECT_EQ(m_error.message(), Str("/a/b.zip, entry 'c.xml': the outermost element is <html>, expected <list>"));
}

TEST_F(XmlAttributes, MissingOnesAreTold) {
    std::string text;
    EXPECT_FALSE(m_reader.readText(parse("a=\"1\""), "b", &text, &m_error));
    expectError(" without the attribute 'b'");
}

TEST_F(XmlAttributes, UnknownWordsAreTold) {
    int value = 0;
    EXPECT_TRUE(m_reader.readWord(parse("color=\"blue\""), "color", COLORS, &value, &m_error));
    EXPECT_EQ(value, 7);
    EXPECT_FALSE(m_reader.readWord(parse("color=\"pink\""), "color", COLORS, &value, &m_error));
    expectError(" has the color 'pink', expected one of red, green, blue");
}

TEST_F(XmlAttributes, LongValuesAreCut) {
    double real = 0;
    EXPECT_FALSE(m_reader.readReal(parse("x=\"" + std::string(41, 'y') + "\""), "x", &real, &m_error));
    expectError(" has the x '" + std::string(40, 'y') + "...', expected a number");
}

TEST_F(XmlAttributes, WholeNumbersStayInTheirRange) {
    int number = 0;
    EXPECT_TRUE(m_reader.readNumber(parse("n=\"3\""), "n", 3, 3, &number, &m_error));
    EXPECT_EQ(number, 3);
    for (const char* wrong : {"2", "4", "3.0", "3 ", "", "99999999999999999999"}) {
        EXPECT_FALSE(m_reader.readNumber(parse("n=\"" + std::string(wrong) + "\""), "n", 3, 3, &number, &m_error));
        expectError(" has the n '" + std::string(wrong) + "', expected a whole number from 3 to 3");
    }
    EXPECT_FALSE(m_reader.readNumber(parse("n=\"3\""), "n", 0, -1, &number, &m_error));
    expectError(" has the n '3', expected nothing, as there is nothing to name");
}

TEST_F(XmlAttributes, ListsHaveTheirLengthAndNumbers) {
    std::vector<double> reals;
    EXPECT_FALSE(m_reader.readReals(parse("v=\"1 2\""), "v", 3, &reals, &m_error));
    expectError(" has the v '1 2', expected 3 numbers");
    EXPECT_FALSE(m_reader.readReals(parse("v=\"1 b\""), "v", 2, &reals, &m_error));
    expectError(" has the v 'b', expected a number");
    std::vector<int> numbers;
    EXPECT_FALSE(m_reader.readNumbers(parse("v=\"1 2\""), "v", 3, 9, &numbers, &m_error));
    expectError(" has the v '1 2', expected 3 numbers");
    EXPECT_FALSE(m_reader.readNumbers(parse("v=\"1 10\""), "v", 2, 9, &numbers, &m_error));
    expectError(" has the v '10', expected a whole number from 0 to 9");
    EXPECT_FALSE(m_reader.readNumbers(parse("v=\"-1\""), "v", 1, 9, &numbers, &m_error));
    expectError(" has the v '-1', expected a whole number from 0 to 9");
}

} // namespace

#include "OrvUnstructGrid/SituationXml_p.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvUnstructGrid/Situations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

using namespace orv;
using namespace orv::ug;
using orvtest::described;

namespace {

std::string written(const Situation& situation) {
    std::string text;
    Error error;
    EXPECT_TRUE(writeSituationXml(situation, "a.xml", &text, &error)) << error.message();
    return text;
}

PtrRef<Situation> readFrom(std::string text) {
    const PtrRef<Situation> situation(new Situation);
    Error error;
    EXPECT_TRUE(readSituationXml(text, "a.xml", situation.get(), &error)) << error.message();
    return situation;
}

/// A situation that would show any change.
PtrRef<Situation> earlierSituation() {
    const PtrRef<Situation> situation(new Situation);
    situation->setName("earlier");
    situation->setDescription("what was there before");
    situation->setSourceModelFile("earlier.frd");
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    collection->append(PtrRef<PropertySet>(new PropertySet("kept")).get());
    situation->setPropertyCollection(collection.get());
    situation->setAllUserData({{"a", "b"}});
    situation->setUnknownXml("<situation/>");
    return situation;
}

/// Why a text is refused. The situation must be left as it was.
std::string refusalOf(std::string text) {
    const PtrRef<Situation> situation = earlierSituation();
    const std::string before = described(*situation);
    Error error;
    std::string copy = text;
    EXPECT_FALSE(readSituationXml(text, "a.xml", situation.get(), &error)) << copy.substr(0, 200);
    EXPECT_EQ(described(*situation), before);
    EXPECT_FALSE(readSituationXml(copy, "a.xml", situation.get(), nullptr));
    return error.message().toStdString();
}

const std::string START = "<situation format=\"1.0\" name=\"\" description=\"\" sourceModelFile=\"\"";

std::string withRoot(const std::string& inside) {
    return START + ">" + inside + "</situation>";
}

std::string withSet(const std::string& inside) {
    return withRoot("<properties><set classType=\"c\">" + inside + "</set></properties>");
}

TEST(SituationXml, SpellsASituation) {
    const PtrRef<Situation> situation(new Situation);
    situation->setName("Wing");
    situation->setDescription("Two lines:\n<1> & \"2\"\\");
    situation->setSourceModelFile("/data/wing.frd");
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    const PtrRef<PropertySet> set(new PropertySet("lamp"));
    set->setValue("a", 3);
    set->setValue("b", 0.1);
    set->setValue("c", true);
    set->setValue("d", Str("\u00dc"));
    set->setValue("e", Vec3d(1, -2.5, UNDEFINED_DOUBLE));
    set->setValue("f", std::vector<double>{1e300, 0});
    set->setValue("g", std::vector<double>{});
    collection->append(set.get());
    situation->setPropertyCollection(collection.get());
    situation->setAllUserData({{"key", "value\x01"}});
    EXPECT_EQ(written(*situation), R"(<?xml version="1.0"?>
<situation format="1.0" name="Wing" description="Two lines:\u{a}&lt;1> &amp; \u{22}2\u{22}\\" sourceModelFile="/data/wing.frd">
 <properties>
  <set classType="lamp">
   <int key="a" value="3" />
   <double key="b" value="0.1" />
   <bool key="c" value="true" />
   <text key="d" value="Ü" />
   <vector key="e" value="1 -2.5 undefined" />
   <numbers key="f" value="1e+300 0" />
   <numbers key="g" value="" />
  </set>
 </properties>
 <userData>
  <entry key="key" value="value\u{1}" />
 </userData>
</situation>
)");
    EXPECT_EQ(described(*readFrom(written(*situation))), described(*situation));
}

// A reader need not ask, and a situation in a catalogue must have one.
TEST(SituationXml, GivesAPropertyCollectionWhereThereWasNone) {
    const PtrRef<Situation> situation(new Situation);
    EXPECT_EQ(written(*situation), "<?xml version=\"1.0\"?>\n" + START + ">\n <userData />\n</situation>\n");
    const PtrRef<Situation> read = readFrom(START + "/>");
    ASSERT_TRUE(read->propertyCollection());
    EXPECT_EQ(read->propertyCollection()->count(), 0u);
    EXPECT_TRUE(read->allUserData().empty());
}

TEST(SituationXml, ReplacesAllThatWasThere) {
    const PtrRef<Situation> situation = earlierSituation();
    const PropertySetCollection* earlier = situation->propertyCollection();
    std::string text = START + "/>";
    ASSERT_TRUE(readSituationXml(text, "a.xml", situation.get(), nullptr));
    EXPECT_NE(situation->propertyCollection(), earlier);
    EXPECT_EQ(described(*situation), described(*readFrom(START + "/>")));
}

TEST(SituationXml, KeepsEveryCharacter) {
    std::wstring all;
    for (wchar_t c = 0; c < 0x3000; ++c) {
        all += c;
    }
    for (const wchar_t c : {0xD7FF, 0xD800, 0xDFFF, 0xE000, 0xFEFF, 0xFFFD, 0xFFFE, 0xFFFF, 0x10000, 0x1F600, 0x10FFFF,
                            0x110000, 0x7FFFFFFF}) {
        all += c;
    }
    const PtrRef<Situation> situation(new Situation);
    situation->setName(all);
    situation->setAllUserData({{all, all}, {L" ", L"  "}, {L"\n", L"\r\n"}});
    situation->setPropertyCollection(PtrRef<PropertySetCollection>(new PropertySetCollection).get());
    const std::string text = written(*situation);
    EXPECT_EQ(described(*readFrom(text)), described(*situation));
    // Nothing that XML 1.0 has no place for, neither as it is nor as a reference.
    for (const char c : text) {
        EXPECT_TRUE(static_cast<unsigned char>(c) >= 0x20 || c == '\n');
    }
    EXPECT_EQ(text.find("&#"), std::string::npos);
    EXPECT_EQ(text.find("\xEF\xBF\xBE"), std::string::npos); // U+FFFE
    EXPECT_EQ(text.find("\xEF\xBF\xBF"), std::string::npos);
}

TEST(SituationXml, KeepsEveryBitOfANumber) {
    std::mt19937_64 random(2026);
    std::vector<double> numbers = {0.0,
                                   -0.0,
                                   UNDEFINED_DOUBLE,
                                   -UNDEFINED_DOUBLE,
                                   std::numeric_limits<double>::infinity(),
                                   -std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::denorm_min()};
    for (int i = 0; i < 10000; ++i) {
        numbers.push_back(std::bit_cast<double>(random()));
    }
    const PtrRef<Situation> situation(new Situation);
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    const PtrRef<PropertySet> set(new PropertySet("numbers"));
    set->setValue("all", numbers);
    for (std::size_t i = 0; i < 100; ++i) {
        set->setValue("d" + std::to_string(i), numbers[i]);
        set->setValue("v" + std::to_string(i), Vec3d(numbers[i], numbers[i + 1], numbers[i + 2]));
        set->setValue("i" + std::to_string(i), static_cast<int>(random()));
    }
    collection->append(set.get());
    situation->setPropertyCollection(collection.get());
    EXPECT_EQ(described(*readFrom(written(*situation))), described(*situation));
}

TEST(SituationXml, KeepsTenThousandEntries) {
    const PtrRef<Situation> situation(new Situation);
    std::map<Str, Str> data;
    for (int i = 0; i < 10000; ++i) {
        data["key " + std::to_string(i)] = std::string(std::size_t(i % 100), 'x');
    }
    situation->setAllUserData(data);
    EXPECT_EQ(readFrom(written(*situation))->allUserData(), data);
}

TEST(SituationXml, TakesWhatPeopleWrite) {
    const PtrRef<Situation> read =
        readFrom("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>\r\n<!-- mine -->\r\n"
                 "<situation sourceModelFile='\\u{41}\\\\'\tname='' description='a&#10;b&#x41;'\r\n format='1.0'>\r\n"
                 "<userData><!-- here --><entry value='1' key='&lt;'></entry></userData></situation>");
    EXPECT_EQ(read->description(), "a\nbA");
    EXPECT_EQ(read->sourceModelFile(), "A\\");
    EXPECT_EQ(read->allUserData(), (std::map<Str, Str>{{"<", "1"}}));
    EXPECT_TRUE(read->unknownXml().empty());
}

TEST(SituationXml, KeepsWhatItDoesNotKnow) {
    const std::string text = R"(<?xml version="1.0"?>
<situation format="1.7" name="a" description="" sourceModelFile="" author="me">
 <properties order="any">
  <set classType="camera" new="1">
   <int key="a" value="1" unit="mm" />
   <matrix key="m">
    <row>1 2</row>
   </matrix>
  </set>
  <set classType="camera">
   <double key="d" value="2" unit="m" />
  </set>
 </properties>
 <userData>
  <entry key="k" value="v" by="you" />
 </userData>
 <future kind="x">text &amp; <b>bold</b><![CDATA[<raw>]]></future>
 <blank>  </blank>
</situation>
)";
    const PtrRef<Situation> situation = readFrom(text);
    EXPECT_EQ(situation->name(), "a");
    EXPECT_EQ(situation->propertyCollection()->propertySet(0)->count(), 1u);
    EXPECT_EQ(written(*situation), text);
    EXPECT_EQ(written(*readFrom(written(*situation))), text);
}

TEST(SituationXml, UnknownThingsGoWithTheElementThatTheyAreIn) {
    const PtrRef<Situation> situation = readFrom(R"(<situation format="1.0" name="" description="" sourceModelFile="">
<properties><set classType="b" x="1"/><set classType="a" x="2"><int key="i" value="1" y="1"/><int key="j" value="1" y="2"/></set></properties>
<userData><entry key="k" value="v" z="1"/><entry key="l" value="v" z="2"/></userData></situation>)");
    PropertySetCollection* collection = situation->propertyCollection();
    collection->remove(0);
    collection->propertySet(0)->setValue("j", 7);
    collection->propertySet(0)->setValue("i", 7.5); // Another element.
    situation->setAllUserData({{"l", "changed"}, {"m", ""}});
    EXPECT_EQ(written(*situation), R"(<?xml version="1.0"?>
<situation format="1.0" name="" description="" sourceModelFile="">
 <properties>
  <set classType="a" x="2">
   <double key="i" value="7.5" />
   <int key="j" value="7" y="2" />
  </set>
 </properties>
 <userData>
  <entry key="l" value="changed" z="2" />
  <entry key="m" value="" />
 </userData>
</situation>
)");
}

TEST(SituationXml, AKeyMayBeSpelledInAnyWay) {
    const PtrRef<Situation> situation =
        readFrom(withRoot("<userData><entry key='\\u{41}' value='' x='1'/></userData>"));
    EXPECT_NE(written(*situation).find("<entry key=\"A\" value=\"\" x=\"1\" />"), std::string::npos);
}

TEST(SituationXml, SetsOfOneClassTypeKeepTheirOrder) {
    const std::string set = "<set classType='a'/>";
    const PtrRef<Situation> situation =
        readFrom(withRoot("<properties>" + set + "<set classType='a' x='1'/>" + set + "</properties>"));
    const std::string text = written(*situation);
    EXPECT_NE(text.find("  <set classType=\"a\" />\n  <set classType=\"a\" x=\"1\" />\n  <set classType=\"a\" />\n"),
              std::string::npos)
        << text;
}

TEST(SituationXml, ReadsLaterMinorFormatsOnly) {
    const auto withFormat = [](const std::string& format) {
        return "<situation format=\"" + format + "\" name=\"\" description=\"\" sourceModelFile=\"\"/>";
    };
    const auto tellOf = [](const std::string& format, const std::string& expectation) {
        return "a.xml, byte 1: <situation> has the format '" + format + "', expected " + expectation;
    };
    readFrom(withFormat("1.0"));
    EXPECT_NE(written(*readFrom(withFormat("1.99"))).find("format=\"1.0\""), std::string::npos); // It had nothing new.
    for (const char* later : {"2.0", "2.1", "17.0"}) {
        EXPECT_EQ(refusalOf(withFormat(later)), tellOf(later, "1.0; a later version has written it"));
    }
    for (const char* none : {"", "1", "1.", ".0", "1.0.0", "0.9", "-1.0", "1.-1", "1,0", " 1.0", "1.0 ", "one",
                             "99999999999999999999.0", "1.99999999999999999999"}) {
        EXPECT_EQ(refusalOf(withFormat(none)), tellOf(none, "one like 1.0"));
    }
}

/// Why a text is refused that has a "@" before the element that is to blame, and that it is this element.
std::string refusalAtMark(std::string text) {
    const std::size_t mark = text.find('@');
    text.erase(mark, 1);
    const std::string refusal = refusalOf(text);
    const std::string place = "a.xml, byte " + std::to_string(mark + 1) + ": ";
    EXPECT_TRUE(refusal.starts_with(place)) << refusal << "\n" << text;
    return refusal.substr(std::min(refusal.size(), place.size()));
}

TEST(SituationXml, TellsWhereItIsNoXml) {
    EXPECT_EQ(refusalOf(""), "a.xml, byte 0: not well-formed XML: No document element found");
    EXPECT_EQ(refusalOf("<situation"), "a.xml, byte 9: not well-formed XML: Error parsing start element tag");
    EXPECT_EQ(refusalOf("<orvapp/>"), "a.xml: the outermost element is <orvapp>, expected <situation>");
}

TEST(SituationXml, TellsWhatIsWrong) {
    const std::string badText = ", expected a text whose backslashes are \"\\\\\" or begin \"\\u{...}\"";
    const std::string twice = "has the key 'k', expected one that has not been there before";
    const std::pair<std::string, std::string> cases[] = {
        {"@<situation/>", "<situation> without the attribute 'format'"},
        {"@<situation format='1.0'/>", "<situation> without the attribute 'name'"},
        {"@<situation format='1.0' name=''/>", "<situation> without the attribute 'description'"},
        {"@<situation format='1.0' name='' description=''/>", "<situation> without the attribute 'sourceModelFile'"},
        {"@" + START + " name='again'/>", "<situation> has the attribute 'name' twice"},
        {START + "/>@<a/>", "<a> beside the outermost element, expected nothing"},
        {"@<situation format='1.0' name='a\\b' description='' sourceModelFile=''/>",
         "<situation> has the name 'a\\b'" + badText},
        {withRoot("<properties/>@<properties/>"), "<properties> for the second time, expected once"},
        {withRoot("<userData/><x/>@<userData/>"), "<userData> for the second time, expected once"},
        {withRoot("<properties>@<set/></properties>"), "<set> without the attribute 'classType'"},
        {withRoot("<userData>@<entry key=''/></userData>"), "<entry> without the attribute 'value'"},
        {withRoot("<userData>@<entry value=''/></userData>"), "<entry> without the attribute 'key'"},
        {withRoot("<userData><entry key='k' value=''/>@<entry key='k' value=''/></userData>"), "<entry> " + twice},
        {withRoot("<x>@<y a='' b='' a=''/></x>"), "<y> has the attribute 'a' twice"},
        {withSet("@<int value='1'/>"), "<int> without the attribute 'key'"},
        {withSet("@<int key='a'/>"), "<int> without the attribute 'value'"},
        {withSet("<int key='k' value='1'/>@<double key='k' value='1'/>"), "<double> " + twice},
        {withSet("@<bool key='a' value='TRUE'/>"), "<bool> has the value 'TRUE', expected one of false, true"},
        {withSet("@<double key='a' value='1,5'/>"), "<double> has the value '1,5', expected a number"},
        {withSet("@<double key='a' value=''/>"), "<double> has the value '', expected a number"},
        {withSet("@<text key='a' value='\\u{}'/>"), "<text> has the value '\\u{}'" + badText},
        {withSet("@<text key='a\\' value=''/>"), "<text> has the key 'a\\'" + badText},
        {withSet("@<vector key='a' value='1 2'/>"), "<vector> has the value '1 2', expected 3 numbers"},
        {withSet("@<vector key='a' value='1 2 3 4'/>"), "<vector> has the value '1 2 3 4', expected 3 numbers"},
        {withSet("@<vector key='a' value='1 2 z'/>"), "<vector> has the value 'z', expected a number"},
        {withSet("@<numbers key='a' value='1  2'/>"), "<numbers> has the value '', expected a number"},
    };
    for (const auto& [text, problem] : cases) {
        EXPECT_EQ(refusalAtMark(text), problem) << text;
    }
    for (const std::string number : {"", "1.5", "0x1", "2147483648", "-2147483649", "1 2", "+"}) {
        EXPECT_EQ(refusalAtMark(withSet("@<int key='a' value='" + number + "'/>")),
                  "<int> has the value '" + number + "', expected a whole number from -2147483648 to 2147483647");
    }
}

TEST(SituationXml, QuotesLittleOfWhatIsLong) {
    const std::string name(100000, 'n');
    EXPECT_LT(refusalOf("<situation format=\"" + name + "\"/>").size(), 200u);
    EXPECT_LT(refusalOf("<" + name + "/>").size(), 200u);
    EXPECT_LT(refusalOf(START + "/><" + name + "/>").size(), 200u);
    EXPECT_LT(refusalOf(START + " " + name + "='1' " + name + "='2'/>").size(), 200u);
}

TEST(SituationXml, RefusesDocumentTypes) {
    std::string bomb = "<!DOCTYPE situation [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 10; ++i) {
        const std::string inner = "&a" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j) {
            bomb += inner;
        }
        bomb += "\">";
    }
    bomb += "]>";
    EXPECT_NE(refusalOf(bomb + START + "><x>&a9;</x></situation>").find("document type"), std::string::npos);
    EXPECT_NE(refusalOf("<!DOCTYPE situation SYSTEM \"file:///etc/passwd\">" + START + "/>").find("document type"),
              std::string::npos);
}

TEST(SituationXml, RefusesWhatIsTooDeep) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 1; i < depth; ++i) {
            text += "<a>";
        }
        text += "A text is no element.";
        for (int i = 1; i < depth; ++i) {
            text += "</a>";
        }
        return withRoot(text);
    };
    readFrom(nested(64));
    EXPECT_NE(refusalOf(nested(65)).find("<a> more than 64 elements deep"), std::string::npos);
    EXPECT_NE(refusalOf(nested(400000)).find("deep"), std::string::npos);
    // A billion of them have no end in a file that may be read.
    std::string open;
    for (int i = 0; i < 900000; ++i) {
        open += "<a>";
    }
    EXPECT_NE(refusalOf(START + ">" + open).find("not well-formed"), std::string::npos);
}

// With those of any root about them more than there may be.
std::string manyTags() {
    std::string many;
    while (many.size() < 4 * MOST_SITUATION_TAGS) {
        many += "<a/>";
    }
    return many;
}

TEST(SituationXml, RefusesWhatIsTooLarge) {
    EXPECT_EQ(refusalOf(withRoot(manyTags())), "a.xml: more than 1000000 tags, which no situation has");
    const std::string large = withRoot("<a b='" + std::string(LONGEST_SITUATION_XML, 'x') + "'/>");
    EXPECT_EQ(refusalOf(large), "a.xml: more than 33554432 bytes, which no situation has");
}

// What could not be read is not written.
TEST(SituationXml, WritesNothingThatIsTooLarge) {
    const PtrRef<Situation> situation(new Situation);
    std::string text;
    Error error;
    situation->setUnknownXml("<situation a='" + std::string(LONGEST_SITUATION_XML, 'x') + "'/>");
    EXPECT_FALSE(writeSituationXml(*situation, "a.xml", &text, &error));
    EXPECT_EQ(error.message(), "a.xml: more than 33554432 bytes, which no situation has");
    situation->setUnknownXml("<situation>" + manyTags() + "</situation>");
    EXPECT_FALSE(writeSituationXml(*situation, "a.xml", &text, &error));
    EXPECT_EQ(error.message(), "a.xml: more than 1000000 tags, which no situation has");
}

TEST(SituationXml, RefusesATextThatWasCutAnywhere) {
    const std::string whole = written(*earlierSituation());
    // Behind the last ">" there is only a line end.
    for (std::size_t size = 0; size < whole.size() - 1; ++size) {
        refusalOf(whole.substr(0, size));
    }
    readFrom(whole.substr(0, whole.size() - 1));
}

TEST(SituationXml, SurvivesAnyOneWrongByte) {
    const std::string whole = written(*earlierSituation());
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const char c : {'\0', '<', '>', '"', '&', '\\', 'x', '\xFF'}) {
            std::string text = whole;
            text[i] = c;
            const PtrRef<Situation> situation(new Situation);
            Error error;
            const bool isRead = readSituationXml(text, "a.xml", situation.get(), &error);
            EXPECT_EQ(isRead, error.isEmpty());
            EXPECT_EQ(isRead, situation->propertyCollection() != nullptr);
        }
    }
}

} // namespace

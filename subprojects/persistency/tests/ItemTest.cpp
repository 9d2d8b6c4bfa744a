#include <tarvo/persistency/Characters.h>
#include <tarvo/persistency/Integer.h>
#include <tarvo/persistency/IntegerVector.h>
#include <tarvo/persistency/Persistent.h>
#include <tarvo/persistency/Quantity.h>
#include <tarvo/persistency/QuantityMatrix.h>
#include <tarvo/persistency/String.h>
#include <tarvo/persistency/StringVector.h>
#include <tarvo/persistency/Utf.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

// A persistent owner for items, without a tree around it.
struct Owner : Persistent {
    Owner(const std::string& tag, Persistent* parent = nullptr) : Persistent(tag, "", parent) {}
    const std::string& type() const override {
        static const std::string name = "Owner";
        return name;
    }
};

template <typename T> std::string printed(const T& item) {
    std::ostringstream out;
    item.print(out);
    return out.str();
}

std::string invalidCharacterMessage(const std::function<void()>& f) {
    try {
        f();
    } catch (const ErrorInvalidCharacter& e) {
        const std::string& m = e.message();
        return m.substr(m.find('\n') + 1);
    }
    return "no error";
}

} // namespace

TEST(ItemValidation, TagsAndDescriptions) {
    EXPECT_TRUE(validTag("", false));
    EXPECT_TRUE(validDescription(""));
    EXPECT_TRUE(validTag("S01[2]", false));
    EXPECT_TRUE(validTag("Test2<Membrane22Rtsc>", false));
    EXPECT_TRUE(validTag("température", false)); // accented Latin letters are letters
    EXPECT_TRUE(validTag("Δp", false));
    EXPECT_FALSE(validTag("2a", false));
    EXPECT_FALSE(validTag("_a", false));
    EXPECT_FALSE(validTag("a.b", false));
    EXPECT_TRUE(validTag("a.b", true));
    EXPECT_FALSE(validTag("a:b", false));
    EXPECT_TRUE(validTag("a:b", true));
    EXPECT_FALSE(validTag("a€", false)); // a code point outside the letters, not an ASCII mark
    EXPECT_FALSE(validTag("a'b", false));
    EXPECT_FALSE(validTag(std::string("a\0b", 3), false)); // a NUL inside, in an ASCII text as in any other
    EXPECT_TRUE(validDescription("Membrane area, m2 {total} [sum]"));
    EXPECT_FALSE(validDescription("Pressure (abs)"));
    EXPECT_FALSE(validDescription("50% cut"));
    EXPECT_FALSE(validDescription("a/b"));
}

TEST(ItemValidation, MalformedUtf8IsRefusedWithTheConvertersWords) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(validTag("a\xC3", false));        // cut short
    EXPECT_FALSE(validTag("a\xC3\x28", false));    // bad continuation
    EXPECT_FALSE(validTag("a\xC0\xAF", false));    // overlong
    EXPECT_FALSE(validTag("a\xED\xA0\x80", false)); // surrogate
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find("UtfConverter error: partial character in source, but hit end"), std::string::npos);
    EXPECT_NE(err.find("UtfConverter error: source sequence is illegal or malformed"), std::string::npos);
}

TEST(ItemValidation, Utf32RoundTrip) {
    const std::string text = "Ab é Δ 中 \xF0\x9F\x98\x80";
    std::u32string wide;
    ASSERT_EQ(utf8ToUtf32(text, wide), ConversionResult::ok);
    EXPECT_EQ(wide.size(), 10u);
    std::string back;
    ASSERT_EQ(utf32ToUtf8(wide, back), ConversionResult::ok);
    EXPECT_EQ(back, text);
    EXPECT_STREQ(conversionMessage(ConversionResult::targetExhausted), "insufficient room in target for conversion");
}

TEST(Item, ConstructorRefusesWhatSetTagAdmits) {
    Owner owner("root");
    EXPECT_EQ(invalidCharacterMessage([&] { Integer("3x", "", 0, &owner); }),
              "Invalid characters error: Field tag contains invalid characters or does not begin with an alphabetic "
              "element: \"3x\"\n");
    EXPECT_EQ(invalidCharacterMessage([&] { Integer("a.b", "", 0, &owner); }).substr(0, 41),
              "Invalid characters error: Field tag conta");
    EXPECT_NE(invalidCharacterMessage([&] { Integer("n", "Pressure (abs)", 0, &owner); }).find("Field description"),
              std::string::npos);
    Integer n("n", "", 0, &owner);
    n.setTag("a.b:c");
    EXPECT_EQ(n.tag(), "a.b:c");
    EXPECT_NE(invalidCharacterMessage([&] { n.setTag("9"); }), "no error");
    EXPECT_EQ(n.tag(), "a.b:c"); // unchanged by the refused one
    n.setTag(std::u32string(U"Größe"));
    EXPECT_EQ(n.tag(), "Größe");
}

TEST(Item, FullTagsAndEquality) {
    Owner root("root"), child("child", &root);
    Integer leaf("leaf", "", 1, &child);
    EXPECT_EQ(root.fullTag(), "root");
    EXPECT_EQ(leaf.fullTag(), "root:child:leaf");

    Owner other("other");
    Integer same("leaf", "", 2, &child), elsewhere("leaf", "", 1, &other), orphan("leaf", "", 1, nullptr);
    EXPECT_TRUE(leaf == same); // values are not compared
    EXPECT_FALSE(leaf == elsewhere);
    EXPECT_FALSE(leaf == orphan);
    EXPECT_FALSE(leaf == String("leaf", "", "1", &child));
}

TEST(Item, QuantityIsAValueWhoseNameSurvivesAssignment) {
    Owner owner("unit");
    Quantity area("A", "Membrane area", "m2", &owner, 1167.0);
    EXPECT_EQ(area.toDouble(), 1167.0);
    EXPECT_EQ(area.type(), "Quantity");
    area = Value(2.0, "m2") * 3.0;
    EXPECT_EQ(area.toDouble(), 6.0);
    Quantity other("B", "Other", "m2", &owner, 10.0);
    area = other;
    EXPECT_EQ(area.tag(), "A");
    EXPECT_EQ(area.description(), "Membrane area");
    EXPECT_EQ(area.toDouble("cm2"), 100000.0);
    EXPECT_THROW(area = Value(1.0, "K"), ErrorUnit);
}

TEST(ItemVectors, IndexErrorsAndMatrixLayout) {
    Owner owner("o");
    QuantityMatrix m("K", "", 2, 3, Value(0.0), &owner);
    EXPECT_EQ(m.size(), 6u);
    EXPECT_EQ(m.columns(), 3u);
    for (int i = 0; i < 6; ++i) m.at(i) = Value(double(i));
    EXPECT_EQ(m(1, 2).toDouble(), 5.0); // rows * column + row
    EXPECT_EQ(m(0, 1).toDouble(), 2.0);
    try {
        m(2, 0);
        FAIL();
    } catch (const ErrorRunTime& e) {
        EXPECT_EQ(e.message(), "Error was thrown by function: QuantityMatrix::operator()\nGeneric Run-Time error: row "
                               "index is outside range: index larger than number of rows\n");
    }
    IntegerVector v("v", "", 2, 7, &owner);
    try {
        v[2];
        FAIL();
    } catch (const ErrorRunTime& e) {
        EXPECT_EQ(e.message(), "Error was thrown by function: TypeVector::operator[]\nGeneric Run-Time error: index "
                               "is outside range: index larger than vector size\n");
    }
    EXPECT_THROW(v.at(5), ErrorRunTime);
}

TEST(ItemVectors, ResizeKeepsUnitsOfTheFirstElement) {
    Owner owner("o");
    QuantityVector x("x", "", 2, Value(1.0, "K"), &owner);
    x.resize(3);
    EXPECT_EQ(x[2].unitText(), "K");
    EXPECT_EQ(x[2].toDouble(), 0.0);
    x.resize(0);
    x.resize(2);
    EXPECT_EQ(x[1].unitText(), "");
    StringVector s("s", "", 1, "a", &owner);
    s.resize(2);
    EXPECT_EQ(s[1], "");
}

TEST(ItemVectors, PrintForms) {
    Owner owner("o");
    EXPECT_EQ(printed(IntegerVector("v", "", 3, 1, &owner)), "[1, 1, 1]");
    EXPECT_EQ(printed(IntegerVector("v", "", 0, 1, &owner)), "[]");
    StringVector s("s", "", 2, "a", &owner);
    s[1] = "b";
    EXPECT_EQ(printed(s), "[\"a\", \"b\"]");
    QuantityVector q("q", "", 2, Value(1.0, "m"), &owner);
    q[1] = Value(2.0, "m");
    EXPECT_EQ(printed(q), "[\"1 m\", \"2 m\"]");
    QuantityMatrix m("m", "", 2, 2, Value(0.0), &owner);
    m(0, 1) = 1.0;
    m(1, 0) = 2.0;
    m(1, 1) = 3.0;
    EXPECT_EQ(printed(m), "[[\"0 \", \"1 \"], [\"2 \", \"3 \"]]");
    EXPECT_EQ(printed(String("s", "", "text", &owner)), "text");
    EXPECT_EQ(printed(Integer("i", "", -4, &owner)), "-4");
}

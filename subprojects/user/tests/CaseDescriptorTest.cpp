#include <tarvo/user/CaseDescriptor.h>
#include <tarvo/utility/Error.h>

#include <gtest/gtest.h>

using Tarvo::User::CaseDescriptor;

TEST(CaseDescriptor, JsonOverridesAndExtends) {
    CaseDescriptor d("Tank", "T1", "first");
    d.parseOptions(R"({"tag":"T2","stringOptions":{"content":"brine","b":"x"},"integerOptions":{"n":3},"quantities":{"V":2.5,"S01.P":1e5}})");
    EXPECT_EQ(d.type(), "Tank");
    EXPECT_EQ(d.tag(), "T2");
    EXPECT_EQ(d.description(), "first");
    EXPECT_EQ(d.getString("content"), "brine");
    EXPECT_EQ(d.getInteger("n"), 3);
    EXPECT_EQ(d.quantities().at("S01.P"), 1e5);
    EXPECT_EQ(d.text(), "{ \"type\":\"Tank\",\"tag\":\"T2\",\"description\":\"first\",\"stringOptions\":{\"b\":\"x\",\"content\":"
                        "\"brine\"},\"integerOptions\":{\"n\":3},\"quantities\":{\"S01.P\":100000,\"V\":2.5} }");
}

// Anything but one object of known keys with values of their JSON type is refused with its reason, and the
// descriptor stays as it was. Each of these once aborted the kernel or was read as something else.
TEST(CaseDescriptor, EmptyAndBrokenTextsChangeNothing) {
    CaseDescriptor d("Tank", "T1", "first");
    const CaseDescriptor before = d;
    d.parseOptions("");
    EXPECT_TRUE(d == before);
    const std::pair<std::string, std::string> refused[] = {
        {R"({"tag": )", "Syntax error"},
        {"{", "Missing '}'"},
        {"[]", "not a JSON object"},
        {"123", "must be either an array or an object"},
        {"{} x", "Extra non-whitespace"},
        {R"({"quantities":{"V":NaN}})", "Syntax error"},
        {R"({"quantities":{"V":Infinity}})", "Syntax error"},
        {R"({"quantities":{"V":1e999}})", "'1e999' is not a number"},
        {R"({"quantities":{"seqTol":"abc"}})", "quantity seqTol is not a finite number"},
        {R"({"quantities":{"V":true}})", "quantity V is not a finite number"},
        {R"({"integerOptions":{"g":2147483648}})", "integer option g is not an integer"},
        {R"({"integerOptions":{"g":1.5}})", "integer option g is not an integer"},
        {R"({"integerOptions":{"g":null}})", "integer option g is not an integer"},
        {R"({"stringOptions":{"a":{"b":1}}})", "string option a is not a string"},
        {R"({"stringOptions":[]})", "stringOptions is not a JSON object"},
        {R"({"tag":[1,2]})", "tag is not a string"},
        {R"({"tag":"a","tag":"b"})", "Duplicate key"},
        {R"({"Tag":"a"})", "unknown key \"Tag\""},
        {std::string(100000, '[') + std::string(100000, ']'), "stackLimit"},
    };
    for (const auto& [text, reason] : refused) {
        try {
            d.parseOptions(text);
            ADD_FAILURE() << "accepted " << text.substr(0, 40);
        } catch (const Error& e) {
            EXPECT_NE(e.message().find("Failed to parse Case descriptor: "), std::string::npos) << e.message();
            EXPECT_NE(e.message().find(reason), std::string::npos) << text.substr(0, 40) << "\n" << e.message();
        }
        EXPECT_TRUE(d == before) << text.substr(0, 40);
    }
    d.parseOptions(R"({"integerOptions":{"g":2.0},"quantities":{"V":1}})"); // 2.0 is an integer in JSON
    EXPECT_EQ(d.getInteger("g"), 2);
    EXPECT_EQ(d.type(), "Tank");
    EXPECT_EQ(d.tag(), "T1");
    EXPECT_FALSE(d == before);
}

TEST(CaseDescriptor, AWholeDescriptorFromJson) {
    const CaseDescriptor d(R"({"type":"Tank","tag":"a","description":"b","quantities":{"V":4}})");
    EXPECT_EQ(d.type(), "Tank");
    EXPECT_EQ(d.text(), "{ \"type\":\"Tank\",\"tag\":\"a\",\"description\":\"b\",\"stringOptions\":{},\"integerOptions\":{},"
                        "\"quantities\":{\"V\":4} }");
}

// Its text is JSON that reads back into the same descriptor, whatever characters and digits it holds.
TEST(CaseDescriptor, TextReadsBackIntoAnEqualDescriptor) {
    CaseDescriptor d("Tank", "a \"quoted\" tag", "back\\slash\nand line");
    d.setString("k\"ey", "v\talue");
    d.setInteger("n", -2147483647 - 1);
    d.setQuantity("S01.P", 0.1);
    d.setQuantity("V", 1.0 / 3.0);
    EXPECT_TRUE(CaseDescriptor(d.text()) == d) << d.text();
}

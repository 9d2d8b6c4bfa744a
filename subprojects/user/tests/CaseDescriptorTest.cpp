#include <tarvo/user/CaseDescriptor.h>

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

TEST(CaseDescriptor, EmptyAndBrokenTextsChangeNothing) {
    CaseDescriptor d("Tank", "T1", "first");
    const CaseDescriptor before = d;
    d.parseOptions("");
    EXPECT_TRUE(d == before);
    testing::internal::CaptureStderr();
    d.parseOptions(R"({"tag": )");
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(err.rfind("Failed to parse Case descriptor: ", 0), 0u);
    EXPECT_TRUE(d == before);
    d.parseOptions(R"({"quantities":{"V":1}})");
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

#include <tarvo/utility/FunctionName.h>

#include <gtest/gtest.h>

#include <map>

using Tarvo::Utility::shortFunctionName;

TEST(ShortFunctionName, QualifiedMemberWithReturnType) {
    EXPECT_EQ(shortFunctionName("int Tarvo::User::Case::calculateSync()"), "Tarvo::User::Case::calculateSync");
}

TEST(ShortFunctionName, ConstructorWithoutReturnType) {
    EXPECT_EQ(shortFunctionName("Node::Node(Defaults, uint32_t)"), "Node::Node");
}

TEST(ShortFunctionName, TrailingTemplateClauseIsDropped) {
    EXPECT_EQ(shortFunctionName("T& TypeVector<T>::at(size_t) [with T = std::__cxx11::basic_string<char>; "
                                "size_t = long unsigned int]"),
              "TypeVector<T>::at");
}

TEST(ShortFunctionName, CommaInReturnTypeDoesNotCutTheName) {
    EXPECT_EQ(shortFunctionName("std::map<int, double> Foo::bar(int, int)"), "Foo::bar");
    EXPECT_EQ(shortFunctionName("std::pair<int, std::map<int, int> > ns::Foo<int, double>::bar() const"),
              "ns::Foo<int, double>::bar");
}

TEST(ShortFunctionName, SubscriptOperatorKeepsItsName) {
    EXPECT_EQ(shortFunctionName("ComponentGeneric* ListComponents::operator[](const string&) const"),
              "ListComponents::operator[]");
    EXPECT_EQ(shortFunctionName("T& TypeVector<T>::operator[](size_t) [with T = int; size_t = long unsigned int]"),
              "TypeVector<T>::operator[]");
}

TEST(ShortFunctionName, CallOperatorKeepsItsName) {
    EXPECT_EQ(shortFunctionName("Value& QuantityMatrix::operator()(int, int)"), "QuantityMatrix::operator()");
}

namespace probe {
template <typename T> std::pair<T, int> name(const T&) { return {T(TARVO_FUNCTION), 0}; }
} // namespace probe

TEST(ShortFunctionName, SeenThroughTheMacro) {
    EXPECT_EQ(probe::name(std::string()).first, "probe::name");
}

TEST(ShortFunctionName, ALambdaIsNamedAfterItsEnclosingFunction) {
    EXPECT_EQ(shortFunctionName("Tarvo::User::Case::calculateSync()::<lambda(Model&)>"),
              "Tarvo::User::Case::calculateSync");
    auto inner = [] { return std::string(TARVO_FUNCTION); };
    EXPECT_EQ(inner(), "ShortFunctionName_ALambdaIsNamedAfterItsEnclosingFunction_Test::TestBody");
}

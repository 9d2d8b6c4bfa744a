#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <gtest/gtest.h>

namespace {

void thrower() { throw ErrorRunTime("A", "something failed"); }

void passOn(const char* name, void (*inner)()) {
    try {
        inner();
    } catch (Error& e) {
        e.append(name);
        throw;
    }
}

void viaB() { passOn("B", thrower); }
void viaC() { passOn("C", viaB); }

} // namespace

TEST(Error, SectionsReadLikeAStackTraceInnermostFirst) {
    try {
        viaC();
        FAIL() << "no error";
    } catch (const ErrorRunTime& e) {
        EXPECT_EQ(e.message(), "Error was thrown by function: A\n"
                               "Generic Run-Time error: something failed\n"
                               "Called from function: B\n"
                               "Called from function: C\n");
    }
}

TEST(Error, IsNoStandardException) {
    bool caughtAsStd = false;
    try {
        try {
            thrower();
        } catch (const std::exception&) {
            caughtAsStd = true;
        }
    } catch (const Error&) {
    }
    EXPECT_FALSE(caughtAsStd);
}

TEST(Error, FamilyTexts) {
    EXPECT_EQ(ErrorJson("f", "bad").message(), "Error was thrown by function: f\nJSON parsing error: bad\n");
    EXPECT_EQ(ErrorSmartEnum("f", "ScalingMode", "Linear").message(),
              "Error was thrown by function: f\nSmart enumerator error: Unrecognized ScalingMode: Linear\n");
    EXPECT_EQ(ErrorSmartEnum("f", "U1", "FlashMode", "9").message(),
              "Error was thrown by function: f\n"
              "Error type: Smart enumerator error: Unrecognized FlashMode in model U1: 9\n");
    EXPECT_EQ(ErrorBrowsing::objectNotFound("f", "M", "Mixer", "S9").message(),
              "Error was thrown by function: f\nModel browsing error: Object S9 not found in model M of type Mixer\n");
    EXPECT_EQ(ErrorBrowsing::unrecognized("f", "M", "Mixer", "port x").message(),
              "Error was thrown by function: f\nModel browsing error: In model M of type Mixer unrecognized port x\n");
    EXPECT_EQ(ErrorBrowsing::unsupportedOption("f", "o", "s", "M", "Mixer").message(),
              "Error was thrown by function: f\n"
              "Model browsing error: Unsupported option o for String s in model M of type Mixer\n");
    EXPECT_EQ(ErrorObjectFactory("f", "type X not found").message(),
              "Error was thrown by function: f\nObject factory error: Unsupported type: type X not found\n");
    EXPECT_EQ(ErrorObjectFactory("f", "K", "duplicate key").message(),
              "Error was thrown by function: f\nObject factory error: duplicate key: K\n");
    EXPECT_EQ(ErrorDynamicCast("f", "Mixer", "P5Model", "M").message(),
              "Error was thrown by function: f\n"
              "Dynamic cast error: Unsupported conversion of model M of type: Mixer to type: P5Model\n");
    EXPECT_EQ(ErrorInvalidCharacter("f", "tag", "3x").message(),
              "Error was thrown by function: f\nInvalid characters error: Field tag contains invalid characters "
              "or does not begin with an alphabetic element: \"3x\"\n");
    EXPECT_EQ(ErrorConnectivity("f", "a", "b").message(),
              "Error was thrown by function: f\nFlowsheet connectivity error: a b\n");
    EXPECT_EQ(ErrorConnectivity("f", "M1", "Mixer", "out3").message(),
              "Error was thrown by function: f\n"
              "Flowsheet connectivity error: Impossible to attach port out3 to Vertex M1 of type Mixer\n");
    EXPECT_EQ(ErrorUnit("f", "incompatible units", "m", "s").message(),
              "Error was thrown by function: f\nError type: Unit of measurement error - incompatible units <m> <s>\n");
    EXPECT_EQ(ErrorUnit("f", "destination already has units", "K").message(),
              "Error was thrown by function: f\n"
              "Error type: Unit of measurement error - destination already has units <K>\n");
    EXPECT_EQ(ErrorUnit("f", "kg/min").message(),
              "Error was thrown by function: f\nError type: Unit of measurement error - unsupported unit [kg/min]\n");
    EXPECT_EQ(ErrorNoComponent("f", "XE").message(),
              "Error was thrown by function: f\n"
              "Non-existing component error: Component XE not found in component list\n");
    EXPECT_EQ(ErrorNoComponent("f", 7).message(),
              "Error was thrown by function: f\nNon-existing component error\nComponent 7 not found in component list\n");
    EXPECT_EQ(ErrorScaler("f", ": x").message(), "Error was thrown by function: f\nError type: Scaler error: x\n");
}

TEST(Error, DerivedClassSurvivesRethrowByReference) {
    try {
        try {
            throw ErrorUnit("f", "kg/min");
        } catch (Error& e) {
            e.append("g");
            throw;
        }
    } catch (const ErrorUnit& e) {
        EXPECT_NE(e.message().find("Called from function: g\n"), std::string::npos);
        return;
    }
    FAIL() << "the ErrorUnit was sliced";
}

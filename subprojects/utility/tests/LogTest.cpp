#include <tarvo/utility/Log.h>

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace {

// Captures standard output for the lifetime of the object.
class CaptureCout {
public:
    CaptureCout() : old_(std::cout.rdbuf(text_.rdbuf())) {}
    ~CaptureCout() { std::cout.rdbuf(old_); }
    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* old_;
};

struct Restore {
    ~Restore() { Tarvo::Utility::setVerbosityGlobal(2); }
};

namespace plain {
constexpr int verbosityFile = 0;
struct Logger : Diagnostic {
    void logAll() {
        for (int level = 1; level <= 5; ++level) TARVO_LOG(level) << "level " << level;
    }
};
} // namespace plain

namespace quiet {
constexpr int verbosityFile = -1;
struct Logger : Diagnostic {
    void logAll() {
        for (int level = 1; level <= 5; ++level) TARVO_LOG(level) << "level " << level;
    }
};
void logStatic() { TARVO_LOG_STATIC(1) << "static"; }
} // namespace quiet

int countLines(const std::string& s) { return static_cast<int>(std::count(s.begin(), s.end(), '\n')); }

} // namespace

TEST(LevelTest, DefaultVerbosityWritesLevelsOneToThree) {
    Restore restore;
    CaptureCout out;
    plain::Logger().logAll();
    EXPECT_EQ(countLines(out.text()), 3);
    EXPECT_NE(out.text().find("level 3"), std::string::npos);
    EXPECT_EQ(out.text().find("level 4"), std::string::npos);
}

TEST(LevelTest, FileConstantAndInstanceVerbosityAddUp) {
    Restore restore;
    CaptureCout out;
    quiet::Logger logger;
    logger.logAll();
    EXPECT_EQ(countLines(out.text()), 2);
    logger.setVerbosityInstance(1);
    logger.logAll();
    EXPECT_EQ(countLines(out.text()), 5);
    Tarvo::Utility::setVerbosityGlobal(-10);
    logger.logAll();
    EXPECT_EQ(countLines(out.text()), 5);
}

TEST(LevelTest, SuppressedMessageIsNotBuilt) {
    Restore restore;
    CaptureCout out;
    int built = 0;
    auto text = [&] {
        ++built;
        return "x";
    };
    Tarvo::Utility::setVerbosityGlobal(-10);
    quiet::Logger logger;
    {
        constexpr int verbosityFile = 0;
        (void)verbosityFile;
        TARVO_LOG_AT(0, 1) << text();
    }
    EXPECT_EQ(built, 0);
    EXPECT_TRUE(out.text().empty());
}

TEST(LogLine, FormatIsNameAsterisksMessage) {
    Restore restore;
    CaptureCout out;
    quiet::logStatic();
    EXPECT_EQ(out.text(), "{anonymous}::quiet::logStatic * static\n");
}

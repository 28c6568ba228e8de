#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <vela/Profiler.hpp>

namespace vela {
namespace {

using Profile = Profiler<const char*, profiler::Stack>;

static_assert(!std::is_copy_constructible_v<Profile::Mark>);

const char* const names[] = {"Outer", "Inner"};

std::string text_of(const Profile& profile) {
    std::ostringstream out;
    profile.stream(out);
    return out.str();
}

TEST(Profiler, AMarkIsOpenForItsScope) {
    Profile profile;
    {
        const Profile::Mark outer(profile, &names[0]);
        {
            const Profile::Mark inner(profile, &names[1]);
            EXPECT_FALSE(profile.stop());
        }
        EXPECT_FALSE(profile.stop());
    }
    EXPECT_TRUE(profile.stop());
    const auto text = text_of(profile);
    EXPECT_NE(text.find("\nOuter: {seconds: "), std::string::npos) << text;
    EXPECT_NE(text.find("\nInner: {seconds: "), std::string::npos) << text;
}

TEST(Profiler, AMarkAfterStopHasNoEffect) {
    Profile profile;
    ASSERT_TRUE(profile.stop());
    const auto text = text_of(profile);
    {
        const Profile::Mark mark(profile, &names[0]);
        EXPECT_EQ(text_of(profile), text);
    }
    EXPECT_EQ(text_of(profile), text);
}

// A mark without a name leaves its place on the stack to whoever opened it.
TEST(Profiler, AMarkWithoutANameIsNotTakenOff) {
    Profile profile;
    { const Profile::Mark mark(profile, nullptr); }
    EXPECT_FALSE(profile.stop());
    EXPECT_TRUE(profile.pop());
    EXPECT_TRUE(profile.stop());
}

}  // namespace
}  // namespace vela

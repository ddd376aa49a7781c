#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>

#include <gtest/gtest.h>

#include <functional>
#include <source_location>
#include <string>
#include <thread>

namespace {

std::string nameHere() { return OperationScope::PlaceOf(std::source_location::current()).function(); }

/// The operation that a failure names, and its message.
std::string namedBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const CPComException& failure) {
        const OperationScope operation("Handler");
        return failure.getDebugContext().function() + ", " + failure.what();
    }
    return "no failure";
}

TEST(OperationScope, GivesTheNameOfTheInnermostOperation) {
    const OperationScope operation("Outer");
    EXPECT_EQ("Outer", nameHere()) << "a helper speaks for its caller";
    const auto throwWithin = [] {
        const OperationScope inner("Inner");
        EXPECT_EQ("Inner", nameHere());
        ThrowComException(E_FAIL);
    };
    EXPECT_EQ("Inner, CPComException: Inner", namedBy(throwWithin)) << "whoever catches it";
    EXPECT_EQ("Outer", nameHere()) << "behind the inner operation and its failure";

    const auto throwAsGiven = [] { ThrowComException(E_FAIL, "Given", {}, std::source_location::current()); };
    EXPECT_EQ("Given, CPComException: Given", namedBy(throwAsGiven));
    EXPECT_EQ("Outer", nameHere()) << "a name at the throw counts for that throw";

    std::string elsewhere;
    std::thread([&] { elsewhere = nameHere(); }).join();
    EXPECT_NE(std::string::npos, elsewhere.find("nameHere")) << "another thread is in no operation";
}

} // namespace

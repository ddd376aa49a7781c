#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>

#include <gtest/gtest.h>

#include <source_location>
#include <string>
#include <thread>

namespace {

std::string nameHere() { return OperationScope::PlaceOf(std::source_location::current()).function(); }

[[noreturn]] void throwWithin(const char* name) {
    const OperationScope operation(name);
    ThrowComException(E_FAIL);
}

TEST(OperationScope, GivesTheNameOfTheInnermostOperation) {
    const struct {
        const char* rule;
        std::string (*name)();
        const char* expected;
    } rules[] = {
        {"a helper speaks for its caller", nameHere, "Outer"},
        {"an inner operation speaks for itself",
         [] {
             const OperationScope operation("Inner");
             return nameHere();
         },
         "Inner"},
        {"behind an inner operation the outer one speaks",
         [] {
             { const OperationScope operation("Inner"); }
             return nameHere();
         },
         "Outer"},
        {"a failure keeps the name of where it was thrown",
         []() -> std::string {
             try {
                 throwWithin("Inner");
             } catch (const CPComException& failure) {
                 return failure.getDebugContext().function() + ", " + failure.what();
             }
         },
         "Inner, CPComException: Inner"},
        {"a catch clause stands outside of its try block",
         [] {
             try {
                 throwWithin("Inner");
             } catch (const CPComException&) {
                 const OperationScope operation("Handler");
             }
             return nameHere();
         },
         "Outer"},
        {"failures without a result are named alike",
         []() -> std::string {
             try {
                 ThrowFailure<CPExceptionInvalidArgument>([] {
                     const OperationScope operation("Message");
                     return "m";
                 });
             } catch (const CPException& failure) {
                 return failure.getDebugContext().function();
             }
         },
         "Outer"},
        {"a name at the throw counts for that throw",
         []() -> std::string {
             try {
                 ThrowComException(E_FAIL, "Given", {}, std::source_location::current());
             } catch (const CPComException& failure) {
                 return failure.getDebugContext().function() + ", then " + nameHere();
             }
         },
         "Given, then Outer"},
        {"another thread is in no operation",
         [] {
             std::string name;
             std::thread([&] { name = nameHere(); }).join();
             return std::string(name.find("nameHere") != std::string::npos ? "the function's" : name);
         },
         "the function's"},
    };
    const OperationScope operation("Outer");
    for (const auto& each : rules)
        EXPECT_EQ(each.name(), each.expected) << each.rule;
}

} // namespace

#include "Support/ReportRecorder.h"
#include "Support/Rows.h"

#include <ComSupport/FailureBarrier.h>
#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>

namespace {

TEST(ThrowComException, CarriesResultTextLastErrorAndPlace) {
    SetLastError(ERROR_ACCESS_DENIED);
    try {
        const OperationScope operation("Door::Open");
        ThrowComException(E_ACCESSDENIED, "It is locked.");
    } catch (const CPComException& failure) {
        EXPECT_EQ(failure.GetHresult(), E_ACCESSDENIED);
        EXPECT_STREQ(failure.getExceptionMessage(), "CPComException: It is locked.");
        EXPECT_EQ(failure.getLastError(), static_cast<unsigned>(ERROR_ACCESS_DENIED));
        EXPECT_EQ(failure.getDebugContext().function(), "Door::Open");
        EXPECT_NE(failure.getDebugContext().file().find("FailureTest.cpp"), std::string::npos);
    }
}

TEST(ThrowComException, AsksWhetherToStopInADebugger) {
    static std::string asked;
    const auto before = CPException::setDebugQuestion(
        [](const char* type, const char* message, unsigned, const DebugContextReference& context) noexcept {
            asked = std::string(type) + "|" + message + "|" + context.function();
            SetLastError(1); // must not reach the caller
            return false;
        });
    SetLastError(5);
    const OperationScope operation("Door::Open");
    EXPECT_THROW(ThrowComException(E_FAIL), CPComException);
    CPException::setDebugQuestion(before);
    EXPECT_EQ(asked, "CPComException|CPComException: Door::Open|Door::Open");
    EXPECT_EQ(GetLastError(), 5u);
}

HRESULT Guarded(const std::function<void()>& body) {
    const OperationScope operation("Guarded");
    HRESULT hr = S_OK;
    try {
        body();
    }
    CATCH_VARIOUS(hr)
    return hr;
}

TEST(FailureBarrier, TurnsEveryExceptionIntoItsResult) {
    // message: of the report
    const Rows<const char*, std::function<void()>, HRESULT> cases{
        {"std::bad_alloc exception caught by CATCH_VARIOUS() macro.",
         [] { throw std::bad_array_new_length(); }, E_OUTOFMEMORY},
        // A success code that was thrown stays what it is.
        {"CPComException exception caught by CATCH_VARIOUS() macro.", [] { ThrowComException(S_FALSE); },
         S_FALSE},
        {"CPException exception caught by CATCH_VARIOUS() macro.",
         [] {
             throw CPExceptionInvalidArgument(
                 std::string("no"), 0u,
                 DebugContextCopy(DebugContextReference(__FILE__, __LINE__, "Guarded")));
         },
         E_FAIL},
        {"std::exception exception caught by CATCH_VARIOUS() macro.", [] { throw std::runtime_error("no"); },
         E_FAIL},
        {"Unknown exception caught by CATCH_VARIOUS() macro's catch(...).", [] { throw 7; }, E_UNEXPECTED},
    };
    EXPECT_EQ(Guarded([] { ThrowIfFailed(S_FALSE); }), S_OK);
    EXPECT_EQ(Guarded([] { ThrowIfFailed(E_PENDING); }), E_PENDING);
    for (const auto& [message, body, expected] : cases) {
        const ReportRecorder recorder;
        EXPECT_EQ(Guarded(body), expected) << message;
        ASSERT_EQ(recorder.reports().size(), 1u) << message;
        const std::string& report = recorder.reports()[0].text;
        EXPECT_TRUE(report.starts_with(std::string(message) + "\n")) << report;
    }
}

TEST(FailureBarrier, SpeaksForTheOperationAroundItsTryBlock) {
    const ReportRecorder recorder;
    Guarded([] {
        const OperationScope operation("Door::Open");
        ThrowComException(E_ACCESSDENIED);
    });
    {
        const OperationScope operation("Door::Close");
        EXPECT_EQ(ReportIfFailed(E_PENDING), E_PENDING);
        EXPECT_EQ(ReportIfFailed(E_ABORT, "Door::Slam"), E_ABORT);
    }
    ASSERT_EQ(recorder.reports().size(), 3u);
    const char* const names[][2] = {
        {"(Door::Open)", "(Guarded)"}, {"(Door::Close)", "(Door::Close)"}, {"(Door::Slam)", "(Door::Slam)"}};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        const std::string& report = recorder.reports()[i].text;
        const std::size_t caughtAt = report.find("caught at");
        EXPECT_LT(report.find(names[i][0]), caughtAt) << report;
        EXPECT_NE(report.find(names[i][1], caughtAt), std::string::npos) << report;
    }
}

} // namespace

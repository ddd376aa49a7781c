#include "Support/ReportRecorder.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/CPExceptionDuplicateDictionaryIndexEntry.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/CPExceptionOSApiError.h>
#include <LowLevelFacilities/Failures/CPExceptionTooManyArguments.h>
#include <LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h>
#include <LowLevelFacilities/Failures/CPExceptionXMLConfigurationFileParseFailed.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace {

const DebugContextReference place("File.cpp", 12, "Class::Operation");

TEST(CPException, KnowsItsTypeMessageErrorAndPlace) {
    const auto check = [](const std::string& name, const CPException& failure) {
        EXPECT_EQ(name, failure.getExceptionType());
        EXPECT_STREQ("m", failure.what());
        EXPECT_EQ(256u, failure.getDebugContext().size());
        EXPECT_TRUE(failure.getLogString().starts_with(
            name + ": m [last error 5] at File.cpp:12 (Class::Operation)"));
    };
    check("CPComException", CPComException("m", 5, place, E_FAIL));
    check("CPExceptionInvalidArgument", CPExceptionInvalidArgument("m", 5, place));
    check("CPExceptionOSApiError", CPExceptionOSApiError("m", 5, place));
    check("CPExceptionTooManyArguments", CPExceptionTooManyArguments("m", 5, place));
    check("CPExceptionUnknownKeyRequest", CPExceptionUnknownKeyRequest("m", 5, place));
    check("CPExceptionDuplicateDictionaryIndexEntry",
          CPExceptionDuplicateDictionaryIndexEntry("m", 5, place));
    check("CPExceptionXMLConfigurationFileParseFailed",
          CPExceptionXMLConfigurationFileParseFailed("m", 5, place));
}

TEST(CPException, IsThrownForAnHresultWithThePlaceAndTheLastError) {
    SetLastError(31);
    try {
        const OperationScope operation("Class::Operation");
        ThrowIfFailed(S_FALSE);
        ThrowIfFailed(E_PENDING, "not yet.");
        FAIL();
    } catch (const CPComException& thrown) {
        EXPECT_EQ(E_PENDING, thrown.GetHresult());
        EXPECT_STREQ("CPComException: not yet.", thrown.getExceptionMessage());
        EXPECT_EQ(31u, thrown.getLastError());
        EXPECT_EQ("Class::Operation", thrown.getDebugContext().function());
        EXPECT_NE(std::string::npos, thrown.getDebugContext().file().find("CPExceptionTest.cpp"));
    }
    EXPECT_EQ(31u, GetLastError());
}

TEST(CPException, IsThrownWithTheLastErrorThatStoodBeforeItsMessage) {
    SetLastError(31);
    try {
        const OperationScope operation("Class::Operation");
        ThrowFailure<CPExceptionInvalidArgument>([] {
            SetLastError(7);
            return std::string("m");
        });
    } catch (const CPExceptionInvalidArgument& thrown) {
        EXPECT_EQ(31u, thrown.getLastError());
        EXPECT_EQ("Class::Operation", thrown.getDebugContext().function());
        EXPECT_NE(std::string::npos, thrown.getDebugContext().file().find("CPExceptionTest.cpp"));
    }
    EXPECT_EQ(31u, GetLastError());
}

TEST(CPException, AsksTheDebugQuestionOfTheProcess) {
    static std::string asked;
    const auto previous =
        CPException::setDebugQuestion([](const char* type, const char* message, unsigned int,
                                         const DebugContextReference& context) noexcept {
            asked = std::string(type) + "/" + message + "/" + context.function();
            return false;
        });
    const OperationScope operation("Class::Operation");
    EXPECT_THROW(ThrowComException(E_FAIL), CPComException);
    EXPECT_EQ("CPComException/CPComException: Class::Operation/Class::Operation", asked);
    EXPECT_THROW(ThrowFailure<CPExceptionOSApiError>([] { return "m"; }), CPExceptionOSApiError);
    CPException::setDebugQuestion(previous);
    EXPECT_EQ("CPExceptionOSApiError/m/Class::Operation", asked);
    EXPECT_FALSE(CPException::allowForExceptionDebug("T", "m", 0, place));
}

TEST(CPException, ReportsWhatWasCaughtAndWhere) {
    const ReportRecorder recorder;
    SetLastError(9);
    CPException::reportAndProcessCaughtException(CPComException("inner", 5, place, E_FAIL),
                                                 DebugContextReference("Barrier.cpp", 3, "Barrier"), "outer");
    CPException::reportAndProcessCaughtException(std::runtime_error("plain"), DebugContextReference(place),
                                                 nullptr);
    CPException::reportAndProcessCaughtException(std::bad_alloc(), DebugContextReference(place), "memory");
    CPException::reportAndProcessUnknownCaughtException(DebugContextReference(nullptr, 0, nullptr),
                                                        "unknown");
    EXPECT_EQ(9u, GetLastError());
    ASSERT_EQ(4u, recorder.reports().size());
    const char* const parts[] = {"(HRESULT 0x80004005)", "plain", "bad allocation", "unknown"};
    for (std::size_t i = 0; i < std::size(parts); ++i)
        EXPECT_NE(std::string::npos, recorder.reports()[i].text.find(parts[i])) << recorder.reports()[i].text;
    EXPECT_NE(std::string::npos, recorder.reports()[0].text.find("caught at Barrier.cpp:3 (Barrier)"));
}

} // namespace

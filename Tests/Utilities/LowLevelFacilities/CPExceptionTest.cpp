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

TEST(CPException, IsThrownWithThePlaceAndTheLastErrorOfItsCause) {
    const OperationScope operation("Class::Operation");
    SetLastError(31);
    try {
        ThrowIfFailed(S_FALSE);
        ThrowIfFailed(E_PENDING, "not yet.");
        FAIL();
    } catch (const CPComException& thrown) {
        EXPECT_EQ(E_PENDING, thrown.GetHresult());
        EXPECT_STREQ("CPComException: not yet.", thrown.getExceptionMessage());
        EXPECT_EQ(31u, thrown.getLastError());
        EXPECT_NE(std::string::npos, thrown.getDebugContext().file().find("CPExceptionTest.cpp"));
    }
    try {
        ThrowFailure<CPExceptionInvalidArgument>([] {
            SetLastError(7); // what makes the message does not count
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
            asked += std::string(type) + "/" + message + "/" + context.function() + "\n";
            return false;
        });
    const OperationScope operation("Class::Operation");
    EXPECT_THROW(ThrowComException(E_FAIL), CPComException);
    EXPECT_THROW(ThrowFailure<CPExceptionOSApiError>([] { return "m"; }), CPExceptionOSApiError);
    CPException::setDebugQuestion(previous);
    EXPECT_EQ("CPComException/CPComException: Class::Operation/Class::Operation\n"
              "CPExceptionOSApiError/m/Class::Operation\n",
              asked);
}

TEST(CPException, ReportsWhatWasCaughtAndWhere) {
    const ReportRecorder recorder;
    SetLastError(9);
    const auto report = [](const std::exception& caught) {
        CPException::reportAndProcessCaughtException(
            caught, DebugContextReference("Barrier.cpp", 3, "Barrier"), nullptr);
    };
    report(CPComException("inner", 5, place, E_FAIL));
    report(std::runtime_error("plain"));
    report(std::bad_alloc());
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

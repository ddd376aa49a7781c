// The pull reader: one pass over a text answers all queries.

#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>
#include <Xml/XmlLiteWrapper.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Query = XmlLiteWrapper::Query;

class XmlLite : public InApartment<> {};

std::vector<CXString> Texts(const Query& query) {
    std::vector<CXString> texts;
    for (int i = 0; i < query.GetResult().GetCount(); ++i)
        texts.push_back(*query.GetResult().TryGet(i));
    return texts;
}

TEST_F(XmlLite, AnswersAllQueriesOnOnePass) {
    const Rows<const wchar_t*, std::vector<CXString>> rows{
        {L"/s/tray/name", {L"upper", L"lower \u20AC <&>"}},
        {L"/s/tray", {L"upper", L"lower \u20AC <&>250"}}, // with all below it
        {L"/s/tray/@id", {L"1", L"2"}},
        {L"/s/tray/name/@lang", {L"en"}},
        {L"/s/p:name", {L"prefixed"}},
        {L"/s/other/name", {L""}},
        {L"/tray/name", {}}, // not from the root on
        {L"/x/tray/name", {}},
        {L"/S/tray/name", {}},
        {L"s/tray/name", {}},
        {L"/s//name", {}},
        {L"/@id", {}},
        {L"/s/tray/@", {}},
        {L"", {}},
    };
    XmlLiteWrapper reader;
    EXPECT_TRUE(reader.LoadXmlStringAsReadOnly(
        L"<?xml version='1.0'?><s xmlns:p='urn:p'><!-- <tray/> --><tray id='1'><name "
        L"lang='en'>upper</name></tray>"
        L"<tray id='2'><name>lower &#x20AC; <![CDATA[<&>]]></name><size>250</size></tray>"
        L"<x><tray><name>skipped</name></tray></x><other><name/></other><p:name>prefixed</p:name></s>"));
    std::vector<Query> queries;
    for (const auto& [path, texts] : rows)
        queries.emplace_back(CXString(path));
    for (Query& query : queries)
        reader.AttachQuery(query);
    for (int run = 0; run < 2; ++run) { // the second answers anew
        ASSERT_TRUE(reader.RunAttachedQueries());
        for (std::size_t i = 0; i < queries.size(); ++i)
            EXPECT_EQ(std::get<1>(rows[i]), Texts(queries[i])) << CXString(std::get<0>(rows[i]));
    }
    EXPECT_EQ(nullptr, queries[0].GetResult().TryGet(2));
    EXPECT_EQ(nullptr, queries[0].GetResult().TryGet(-1));
}

TEST_F(XmlLite, GivesNothingForTextThatIsNotWellFormed) {
    XmlLiteWrapper reader;
    Query query(L"/a/b");
    reader.AttachQuery(query);
    for (const wchar_t* malformed : {L" ", L"<a><b>1</b>", L"<a><b>1</b></a><a/>"}) {
        reader.LoadXmlStringAsReadOnly(L"<a><b>good</b></a>");
        ASSERT_TRUE(reader.RunAttachedQueries());
        ASSERT_EQ(1, query.GetResult().GetCount());
        EXPECT_EQ(!CXString(malformed).IsBlank(), reader.LoadXmlStringAsReadOnly(malformed));
        EXPECT_FALSE(reader.RunAttachedQueries()) << CXString(malformed);
        EXPECT_EQ(0, query.GetResult().GetCount()) << CXString(malformed);
    }
}

TEST_F(XmlLite, SurvivesTheFailureOfEachPlatformCall) {
    XmlLiteWrapper reader;
    Query query(L"/a/@b");
    reader.AttachQuery(query);
    reader.LoadXmlStringAsReadOnly(L"<a b='1'/>");
    bool hasFailed = true;
    for (LONG call = 1; hasFailed; ++call) {
        ASSERT_LT(call, 100);
        const OvPlatform::FaultInjectionScope fault(call);
        bool isAnswered = false;
        try {
            isAnswered = reader.RunAttachedQueries();
        } catch (const std::exception&) {
            // Memory was out for the text on its way to the reader.
        }
        hasFailed = OvPlatform::FaultInjection::HasFailed();
        // To let the reader go may fail without harm, when all is read.
        EXPECT_TRUE(isAnswered || hasFailed) << call;
        EXPECT_EQ(isAnswered ? 1 : 0, query.GetResult().GetCount()) << call;
    }
}

} // namespace

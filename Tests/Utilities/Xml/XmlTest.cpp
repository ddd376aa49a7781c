// The parser, its nodes and the serialisation, over the platform's DOM.

#include "Support/InApartment.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Com/FaultInjection.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <Xml/MicrosoftXmlParser.h>
#include <Xml/UtilitiesLibraryHost.h>
#include <Xml/XmlOutputUtf8StringCallback.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

class Xml : public InApartment<> {
protected:
    /// Without the carriage returns, and what ends the last line.
    static std::string Written(
        const OrvelXmlParser& parser, bool withDeclaration,
        XmlOutputCallback::EnhanceXmlLegibilityEnum enhance = XmlOutputCallback::DoNotEnhanceXmlLegibility) {
        CPString text("stale");
        XmlOutputUtf8StringCallback output(text, enhance);
        parser.convertToXmlStream(output, withDeclaration);
        std::string lines(text.view());
        std::erase(lines, '\r');
        return lines.substr(0, lines.find_last_not_of('\n') + 1);
    }
};

TEST_F(Xml, ParsesTextAndBytesAlike) {
    const char* const utf8 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r a='\xC3\xA9'>\xE2\x82\xAC</r>";
    const auto check = [](MicrosoftXmlParser& parser) {
        const XmlDomNode::Pointer root = parser.getDocument().GetDocumentElement();
        ASSERT_TRUE(root);
        EXPECT_EQ(L"\u20AC", root->GetTextValue());
        CXString value;
        EXPECT_TRUE(root->GetAttribute(L"a", value));
        EXPECT_EQ(L"\u00E9", value);
    };
    MicrosoftXmlParser parser(L"test", false);
    parser.parse(CPString(utf8));
    check(parser);
    parser.parse(reinterpret_cast<const unsigned char*>(utf8), std::strlen(utf8));
    check(parser);
    // Text is already decoded: the encoding that it declares does not count.
    parser.parse(CPString("<?xml version=\"1.0\" encoding=\"UTF-16\"?><r a='\xC3\xA9'>\xE2\x82\xAC</r>"));
    check(parser);

    SkipUnderWine("It writes UTF-8 under a declaration of UTF-16.");
    const std::string path = testing::TempDir() + "xml-parser-test.xml";
    parser.SaveXmlToFile(path.c_str());
    MicrosoftXmlParser again(L"file", false);
    again.parseThisFile(path.c_str());
    check(again);
    EXPECT_THROW(again.parseThisFile(L"/nonexistent/file.xml"), CPComException);
}

TEST_F(Xml, SaysWhatIsMalformedAndWhere) {
    SkipUnderWine("It says neither what nor where, and takes documents with a DTD.");
    const auto parser = UtilitiesLibraryHost::CreateMicrosoftXmlParser(L"Queue properties", false);
    for (const char* malformed : {"", "<a>\n<b></a>", "<p:a/>", "<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>"}) {
        parser->parse(CPString("<good/>"));
        try {
            parser->parse(CPString(malformed));
            ADD_FAILURE() << malformed;
        } catch (const CPComException& thrown) {
            // The parser's own code, not a general failure.
            EXPECT_TRUE(FAILED(thrown.GetHresult()) && thrown.GetHresult() != E_FAIL) << malformed;
            const std::string message = thrown.getExceptionMessage();
            EXPECT_TRUE(message.starts_with("CPComException: Queue properties: ")) << message;
            EXPECT_EQ(std::strcmp(malformed, "<a>\n<b></a>") == 0,
                      message.find("(line 2,") != std::string::npos)
                << message;
        }
        EXPECT_FALSE(parser->getDocument().GetDocumentElement()) << malformed;
    }
}

TEST_F(Xml, FindsElementsByName) {
    MicrosoftXmlParser parser(L"test", false);
    parser.parse(
        CPString("<r><a n='1'><deep n='2'><a n='3'/></deep></a><!--c--><deep n='4'/>text<last n='5'/></r>"));
    const XmlDomNode::Pointer root = parser.getDocument().GetDocumentElement();
    const auto numberOf = [](const XmlDomNode::Pointer& node) {
        CXString value;
        if (!node || !node->GetAttribute(L"n", value)) return -1;
        return value.GetAsInt();
    };
    for (const auto& [name, depth, number] : Rows<const wchar_t*, int, int>{{L"deep", 0, 2},
                                                                            {L"deep", 1, 4},
                                                                            {L"deep", 2, 2},
                                                                            {L"last", 0, 5},
                                                                            {L"A", 0, -1},
                                                                            {L"r", 0, -1}})
        EXPECT_EQ(number, numberOf(root->FindNamedChildElementNodeRecursive(name, depth))) << depth;
    const XmlDomNode::Pointer first = root->FindNamedChildElementNode(L"a");
    EXPECT_EQ(1, numberOf(first));
    EXPECT_EQ(3, numberOf(first->FindNamedChildElementNodeRecursive(L"a", 0)));
    EXPECT_EQ(5u, root->GetChildCount());
    EXPECT_FALSE(root->GetFirstChild()->GetNextSibling()->IsElement());
    EXPECT_FALSE(root->GetNextSibling());
}

TEST_F(Xml, ChangesADocumentAndWritesIt) {
    MicrosoftXmlParser parser(L"test", false);
    parser.parse(CPString("<?xml version=\"1.0\"?><r><old/><kept x=\"1\" y=\"2\"/></r>"));
    const XmlDomDocument& document = parser.getDocument();
    const XmlDomNode::Pointer root = document.GetDocumentElement();
    root->RemoveChild(*root->FindNamedChildElementNode(L"old"));
    const XmlDomNode::Pointer kept = root->FindNamedChildElementNode(L"kept");
    kept->SetTextValue(L"<\u20AC>");
    kept->SetAttribute(L"x", L"\"&");
    kept->RemoveAttribute(L"y");
    kept->RemoveAttribute(L"absent");
    const XmlDomNode::Pointer added = document.CreateElement(L"added");
    added->AppendChild(*document.CreateCDataSection(L"<b/>"));
    root->AppendChild(*added);
    root->AppendChild(*document.CreateTextNode(L"t"));

    const char* const body =
        "<r><kept x=\"&quot;&amp;\">&lt;\xE2\x82\xAC&gt;</kept><added><![CDATA[<b/>]]></added>t</r>";
    EXPECT_EQ(body, Written(parser, false));
    EXPECT_EQ(std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + body, Written(parser, true));
    EXPECT_EQ(L"<b/>", added->GetFirstChild()->GetTextValue());
    EXPECT_THROW(added->GetFirstChild()->SetAttribute(L"a", L"b"), CPComException);
    if (!IsWine()) { // which takes any name
        EXPECT_THROW((void)document.CreateElement(L"not a name"), CPComException);
    }
}

TEST_F(Xml, IndentsWhereNoTextChanges) {
    MicrosoftXmlParser parser(L"test", false);
    parser.parse(CPString("<r><a><b>text</b><b/></a><c>mixed<d/></c></r>"));
    EXPECT_EQ("<r>\n  <a>\n    <b>text</b>\n    <b/>\n  </a>\n  <c>mixed<d/></c>\n</r>",
              Written(parser, false, XmlOutputCallback::EnhanceXmlLegibility));
    EXPECT_EQ(std::string::npos, Written(parser, false).find("  <a>")) << "the document is as it was";
}

TEST_F(Xml, KeepsADocumentThatTheParserDied) {
    XmlDomNode::Pointer node;
    {
        MicrosoftXmlParser parser(L"test", false);
        parser.parse(CPString("<r><a>alive</a></r>"));
        node = parser.getDocument().GetDocumentElement()->GetFirstChild();
    }
    EXPECT_EQ(L"alive", node->GetTextValue());
}

TEST_F(Xml, SurvivesTheFailureOfEachPlatformCall) {
    int failures = 0;
    for (LONG call = 1;; ++call) {
        const OvPlatform::FaultInjectionScope fault(call, E_ACCESSDENIED);
        try {
            MicrosoftXmlParser parser(L"test", false);
            parser.parse(CPString("<r><a n='1'/></r>"));
            CXString value;
            const XmlDomNode::Pointer root = parser.getDocument().GetDocumentElement();
            if (root && root->FindNamedChildElementNodeRecursive(L"a", 0)) (void)Written(parser, true);
        } catch (const CPComException& thrown) {
            EXPECT_TRUE(FAILED(thrown.GetHresult()));
            ++failures;
        }
        if (!OvPlatform::FaultInjection::HasFailed()) break;
    }
    EXPECT_LT(5, failures);
}

TEST(UtilitiesLibraryHost, TurnsTheExceptionInFlightIntoAResult) {
    const ReportRecorder recorder;
    const auto resultOf = [](auto thrower) {
        try {
            thrower();
            return S_OK;
        } catch (...) {
            return UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(
                "while parsing the Queue Property Bag");
        }
    };
    const DebugContextReference place("File.cpp", 1, "Operation");
    EXPECT_EQ(E_PENDING, resultOf([&] { throw CPComException("m", 0, place, E_PENDING); }));
    EXPECT_EQ(E_OUTOFMEMORY, resultOf([] { throw std::bad_alloc(); }));
    EXPECT_EQ(E_FAIL, resultOf([&] { throw CPExceptionInvalidArgument("m", 0, place); }));
    EXPECT_EQ(E_ACCESSDENIED, resultOf([] { throw CAtlException(E_ACCESSDENIED); }));
    EXPECT_EQ(E_UNEXPECTED, resultOf([] { throw 1; }));
    ASSERT_EQ(5u, recorder.reports().size());
    for (const auto& report : recorder.reports())
        EXPECT_TRUE(report.text.starts_with("while parsing the Queue Property Bag\n"));
}

} // namespace

#include "Platform/Dom/DomTestSupport.h"

#include <string>
#include <thread>
#include <vector>

// Documents that are loaded from the same bytes again and again may share what was made of them.

namespace {

using Document = CComPtr<IXMLDOMDocument2>;

Document LoadedFrom(const std::string& text) {
    const auto document = NewDocument();
    EXPECT_EQ(S_OK, Load(document, Bytes(text))) << text;
    return document;
}

TEST(RecentTexts, MakeDocumentsThatGoTheirOwnWays) {
    const std::string text = "<a x=\"1\"><own/></a>";
    constexpr int count = 5;
    std::vector<Document> documents;
    for (int number = 0; number < count; ++number) {
        documents.push_back(NewDocument());
        EXPECT_EQ(S_FALSE, Load(documents.back(), Bytes("<")));
        EXPECT_EQ(S_OK, Load(documents.back(), Bytes(text)));
        EXPECT_EQ(S_OK, FailureOf(documents.back()).code);
    }
    for (int number = 0; number < count; ++number) {
        EXPECT_EQ(S_OK, RootOf(documents[number])->setAttribute(CComBSTR(L"x"), CComVariant(-number)));
        for (int other = 0; other < count; ++other)
            EXPECT_EQ("<a x=\"" + std::to_string(other <= number ? -other : 1) + "\"><own/></a>",
                      XmlOf(RootOf(documents[other])))
                << number;
    }
    EXPECT_EQ("<a x=\"2\"><own/></a>\r\n", XmlOf(LoadedFrom("<a x=\"2\"><own/></a>")));
}

TEST(RecentTexts, AreReadAnewUnderOtherSettings) {
    const std::string text = "<b> <c>" + std::string(3000, 'x') + "</c></b>";
    for (int time = 0; time < 3; ++time) {
        for (int again = 0; again < 2; ++again)
            EXPECT_EQ(1, Got(Got(RootOf(LoadedFrom(text)), &IXMLDOMNode::get_childNodes),
                             &IXMLDOMNodeList::get_length));
        const auto shallow = NewDocument();
        EXPECT_EQ(S_OK, shallow->setProperty(CComBSTR(L"MaxElementDepth"), CComVariant(LONG{1})));
        EXPECT_EQ(S_FALSE, Load(shallow, Bytes(text)));
        const auto small = NewDocument();
        EXPECT_EQ(S_OK, small->setProperty(CComBSTR(L"MaxXMLSize"), CComVariant(LONG{2})));
        EXPECT_EQ(S_FALSE, Load(small, Bytes(text)));
        const auto blank = NewDocument();
        EXPECT_EQ(S_OK, blank->put_preserveWhiteSpace(VARIANT_TRUE));
        EXPECT_EQ(S_OK, Load(blank, Bytes(text)));
        EXPECT_EQ(2, Got(Got(RootOf(blank), &IXMLDOMNode::get_childNodes), &IXMLDOMNodeList::get_length));
    }
}

// What is read, and not written before somebody edits, must be there in each of them.
TEST(RecentTexts, AreReadAsTheyStandEachTime) {
    for (int time = 0; time < 4; ++time) {
        const auto document = LoadedFrom("<d><![CDATA[x]]> <e/></d>");
        const auto root = RootOf(document);
        EXPECT_EQ(S_OK, root->removeChild(First(root, "text()"), nullptr));
        EXPECT_EQ("<d>\r\n\t<e/></d>", XmlOf(root)) << time;
        EXPECT_EQ("<f>\xC3\xA9</f>", XmlOf(RootOf(LoadedFrom("<?xml version='1.0' encoding='ISO-8859-1'?>"
                                                             "<f>\xE9</f>"))))
            << time;
    }
}

TEST(RecentTexts, AreSharedByThreads) {
    constexpr int rounds = 50;
    constexpr int count = 4;
    std::vector<std::thread> threads;
    threads.reserve(count);
    for (int number = 0; number < count; ++number)
        threads.emplace_back([number] {
            for (int round = 0; round < rounds; ++round) {
                const std::string begin = "<thread n=\"" + std::to_string(round / 2) + '"';
                const std::string end = "><b/></thread>";
                const auto document = LoadedFrom(begin + end);
                std::string own;
                if (number % 2 == 0) {
                    EXPECT_EQ(S_OK, RootOf(document)->setAttribute(CComBSTR(L"own"), CComVariant(number)));
                    own = " own=\"" + std::to_string(number) + '"';
                }
                EXPECT_EQ(begin + own + end, XmlOf(RootOf(document)));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <AnnotationStore/AnnotationStore.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Store(const std::string& content, const char* version = "1.0") {
    return std::string("<AnnotationStore version=\"") + version + "\">" + content + "</AnnotationStore>";
}

std::string Entry(const std::string& name, const std::string& text) {
    return "<Definition name=\"" + name + "\"><annotation-col-api><text-api>" + text +
           "</text-api></annotation-col-api></Definition>";
}

std::string Definition(const std::string& text) {
    return "<annotation-col-api><text-api>" + text + "</text-api></annotation-col-api>";
}

std::string Entries(std::size_t count) {
    std::string entries;
    for (std::size_t index = 0; index < count; ++index)
        entries += Entry(std::to_string(index), "");
    return entries;
}

class AnnotationStoreTest : public InApartment<> {
protected:
    void SetUp() override {
        SkipUnderWine(
            "its DOM breaks lines of its own, and refuses a text without saying that it is the text");
    }
};

AnnotationStore Read(const std::string& xml) { return AnnotationStore(CPString(xml.c_str()), true); }

TEST_F(AnnotationStoreTest, GivesBackWhatWasPutIntoIt) {
    const CXString name(L"\"a\" <&> 'b' \u00E4\u65E5\xD83D\xDE00");
    AnnotationStore store;
    EXPECT_TRUE(
        AnnotationStore(store.GetAnnotationStoreXml(), true).GetAnnotationDefinitionByName(name).isEmpty());
    store.AddOrReplaceAnnotationDefinition(name, Definition("first").c_str());
    store.AddOrReplaceAnnotationDefinition(
        L"Name", "<?xml version='1.0'?><!-- c --><annotation-col-api xmlns:xsi='urn:x' syntax='collection'>"
                 "<a xsi:b='&quot;&lt;'> \xC3\xA4 </a></annotation-col-api>");
    store.AddOrReplaceAnnotationDefinition(name, Definition("second").c_str());

    const AnnotationStore read(store.GetAnnotationStoreXml(), true);
    EXPECT_EQ(Definition("second"), read.GetAnnotationDefinitionByName(name).view());
    EXPECT_EQ(store.GetAnnotationDefinitionByName(L"Name").view(),
              read.GetAnnotationDefinitionByName(L"Name").view());
    EXPECT_EQ(store.GetAnnotationStoreXml().view(), read.GetAnnotationStoreXml().view());
    EXPECT_TRUE(read.GetAnnotationDefinitionByName(L"name").isEmpty()) << "names are compared exactly";
    EXPECT_FALSE(read.GetAnnotationDefinitionByNameAsXmlDomNode(L"name"));

    const XmlDomNode::Pointer node = read.GetAnnotationDefinitionByNameAsXmlDomNode(L"Name");
    ASSERT_TRUE(node);
    EXPECT_EQ(CXString(L"annotation-col-api"), node->GetNodeName());
    CXString text;
    EXPECT_TRUE(node->FindNamedChildElementNode(L"a")->GetAttribute(L"xsi:b", text));
    EXPECT_EQ(CXString(L"\"<"), text);
    node->SetTextValue(L"changed");
    EXPECT_EQ(CXString(L"\u00E4"),
              read.GetAnnotationDefinitionByNameAsXmlDomNode(L"Name")->GetTextValue().Trim())
        << "the node is the caller's";
}

TEST_F(AnnotationStoreTest, ReadsStoresThatOthersWrote) {
    const AnnotationStore store =
        Read("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- ours -->\n" +
             Store("\n  <!-- c -->\n" + Entry("a", "1") + "\n" + Entry("b", "2") + "\n"));
    EXPECT_EQ(Definition("1"), store.GetAnnotationDefinitionByName(L"a").view());
    EXPECT_EQ(Definition("2"), store.GetAnnotationDefinitionByName(L"b").view());
    // A later version may have what is unknown here.
    const AnnotationStore later =
        Read(Store("<Font/><Definition name='a'>" + Definition("1") + "<Font/></Definition>", "1.7"));
    EXPECT_EQ(Definition("1"), later.GetAnnotationDefinitionByName(L"a").view());
    // What keeps blanks in the store keeps them in a definition that goes on by itself.
    for (const char* const keeping :
         {"<AnnotationStore version='1.0' xml:space='preserve'><Definition name='a'>",
          "<AnnotationStore version='1.0'><Definition name='a' xml:space='preserve'>"}) {
        const AnnotationStore blanks = Read(keeping + std::string("\n") + Definition(" ") +
                                            "</Definition><Definition name='b' xml:space='default'>" +
                                            Definition(" ") + "</Definition></AnnotationStore>");
        EXPECT_EQ(CXString(L" "), blanks.GetAnnotationDefinitionByNameAsXmlDomNode(L"a")->GetTextValue());
        EXPECT_EQ(CXString(L""), blanks.GetAnnotationDefinitionByNameAsXmlDomNode(L"b")->GetTextValue());
    }
    EXPECT_EQ(Read(" \n").GetAnnotationStoreXml().view(), AnnotationStore().GetAnnotationStoreXml().view());
}

TEST_F(AnnotationStoreTest, RefusesAWholeStoreForOneFault) {
    const Rows<const char*, std::string> cases{
        {"no XML", "plain text"},
        {"cut short", Store(Entry("a", "1")).substr(0, 60)},
        {"another root", "<Store version=\"1.0\"/>"},
        {"no version", "<AnnotationStore/>"},
        {"a version to come", Store("", "2.0")},
        {"half a version", Store("", "1.")},
        {"an unknown element", Store(Entry("a", "1") + "<Font/>")},
        {"text", Store(Entry("a", "1") + "text")},
        {"no name", Store("<Definition><annotation-col-api/></Definition>")},
        {"a long name", Store(Entry(std::string(256, 'n'), "1"))},
        {"twice", Store(Entry("a", "1") + Entry("a", "2"))},
        {"nothing in it", Store(Entry("a", "1") + "<Definition name=\"b\"/>")},
        {"another definition", Store("<Definition name=\"b\"><text-api/></Definition>")},
        {"two in one",
         Store("<Definition name=\"b\"><annotation-col-api/><annotation-col-api/></Definition>")},
        {"entities", "<!DOCTYPE a [<!ENTITY e \"e\">]>" + Store(Entry("a", "&e;"))},
        {"too many", Store(Entries(AnnotationStore::maxDefinitions + 1))},
        {"too long", Store(Entry("a", std::string(AnnotationStore::maxBytes, ' ')))},
    };
    for (const auto& [what, xml] : cases) {
        EXPECT_THROW(Read(xml), CPExceptionInvalidArgument) << what;
        const AnnotationStore empty(CPString(xml.c_str()), false);
        EXPECT_TRUE(empty.GetAnnotationDefinitionByName(L"a").isEmpty()) << what;
    }
}

TEST_F(AnnotationStoreTest, RefusesADefinitionAndStaysAsItWas) {
    AnnotationStore store = Read(Store(Entry("a", "1")));
    const std::string before(store.GetAnnotationStoreXml().view());
    const std::string good = Definition("2");
    const Rows<CXString, std::string> cases{
        {L"a", "<annotation-col-api>"},
        {L"a", "<text-api/>"},
        {L"a", ""},
        {L" ", good},
        {CXString(std::wstring(256, L'n')), good},
        {L"a\nb", good},
        {L"a\xD83D"
         L"b",
         good},
        {L"b\xDE00", good},
        {L"b", Definition(std::string(AnnotationStore::maxBytes - 100, 'x'))},
    };
    for (const auto& [name, definition] : cases) {
        EXPECT_THROW(store.AddOrReplaceAnnotationDefinition(name, definition.c_str()),
                     CPExceptionInvalidArgument)
            << name;
        EXPECT_EQ(before, store.GetAnnotationStoreXml().view());
    }
    AnnotationStore full = Read(Store(Entries(AnnotationStore::maxDefinitions)));
    full.AddOrReplaceAnnotationDefinition(L"0", good.c_str());
    EXPECT_THROW(full.AddOrReplaceAnnotationDefinition(L"a", good.c_str()), CPExceptionInvalidArgument);
    EXPECT_TRUE(full.GetAnnotationDefinitionByName(L"a").isEmpty());
}

} // namespace

#include "Support/Rows.h"

#include <Package/PartName.h>

#include <gtest/gtest.h>
#include <msopc.h>

#include <unordered_set>

using namespace OvPlatform;

namespace {

std::string Resolved(const char* source, const char* reference) {
    try {
        return ResolvePartName(source, reference);
    } catch (const PartNameError& error) {
        switch (error.Result()) {
        case OPC_E_NONCONFORMING_URI:
            return "nonconforming";
        case OPC_E_PART_CANNOT_BE_DIRECTORY:
            return "directory";
        case OPC_E_RELATIVE_URI_REQUIRED:
            return "absolute";
        default:
            return "unexpected";
        }
    }
}

} // namespace

TEST(PartName, FollowsTheGrammar) {
    for (const char* name : {"/a.b/~-_.c", "/a%20b", "/%C3%A9", "/!$&'()*+,;=:@", "/..a", "/a%2525"})
        EXPECT_NO_THROW(CheckPartName(name)) << name;
    for (const char* name : {"", "a", "/", "/a/", "/a//b", "/a.", "/a/../b", "/...", "/a b", "/a[0]", "/a\\b",
                             "/a%2Fb", "/a%5cb", "/%41", "/%7E", "/a%2", "/a%GG", "/\xC3\xA9", "/a\x01"})
        EXPECT_THROW(CheckPartName(name), PartNameError) << name;
}

TEST(PartName, ResolvesReferences) {
    const Rows<const char*, const char*, const char*> rows{
        {"/", "a/b.xml", "/a/b.xml"},
        {"/a/b.xml", "c.xml", "/a/c.xml"},
        {"/a/b.xml", "../c.xml", "/c.xml"},
        {"/a/b.xml", "/c.xml#part", "/c.xml"},
        {"/a/b.xml", "#here", "/a/b.xml"},
        {"/a/b.xml", "./d/../%41\xC3\xA9%c3%a9 e.xml", "/a/A%C3%A9%C3%A9%20e.xml"},
        {"/a/b.xml", "x/y:z", "/a/x/y:z"},
        {"/a/b.xml", "../../c.xml", "nonconforming"},
        {"/a/b.xml", "%2e%2e/%2e%2e/c.xml", "nonconforming"},
        {"/a/b.xml", "c%5Cd.xml", "nonconforming"},
        {"/a/b.xml", "c.xml?d", "nonconforming"},
        {"/a/b.xml", "c/", "directory"},
        {"/a/b.xml", "..", "nonconforming"},
        {"/a/b.xml", "http://x/c.xml", "absolute"},
        {"/a/b.xml", "//host/c.xml", "absolute"},
    };
    for (const auto& [source, reference, result] : rows)
        EXPECT_EQ(Resolved(source, reference), result) << reference;

    // Relative ones lead back.
    for (const char* source : {"/", "/a.xml", "/a/b.xml", "/a/b/c.xml", "/ab/c.xml"})
        for (const char* target : {"/a.xml", "/a/b.xml", "/ab/c.xml", "/a/x:y", "/x:y", "/a/b/d/e.xml"})
            EXPECT_EQ(Resolved(source, RelativeReference(source, target).c_str()), target)
                << "from " << source;
    EXPECT_EQ(RelativeReference("/a/b/c.xml", "/a/d.xml"), "../d.xml");
}

TEST(PartName, NamesRelationshipsParts) {
    for (const char* source : {"/", "/b.x", "/a/b.x", "/a/_rels"}) {
        const std::string name = RelationshipsPartName(source);
        EXPECT_TRUE(IsRelationshipsPartName(name)) << name;
        EXPECT_EQ(RelationshipsSource(name), source);
    }
    EXPECT_EQ(RelationshipsPartName("/a/b.x"), "/a/_rels/b.x.rels");
    EXPECT_TRUE(IsRelationshipsPartName("/A/_RELS/b.x.RELS"));
    for (const char* name : {"/a/b.rels", "/_rels/b.xml", "/_rels", "/.rels"})
        EXPECT_FALSE(IsRelationshipsPartName(name));
}

TEST(PartName, ComparesWithoutRegardToAsciiCase) {
    EXPECT_EQ(ComparePartNames("/A/b.XML", "/a/B.xml"), 0);
    EXPECT_GT(ComparePartNames("/b", "/A"), 0);
    EXPECT_NE(ComparePartNames("/[", "/{"), 0)
        << "not letters, though their codes differ as those of cases do";
    std::unordered_set<std::string, PartNameHash, PartNameEqual> names{"/A/b.XML"};
    EXPECT_TRUE(names.contains(std::string_view("/a/B.xml")));
    EXPECT_EQ(PartExtension("/a.b/c"), "");
}

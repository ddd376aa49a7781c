#pragma once

#include "Support/TestFont.h"

#include <map>
#include <string>

/// The fonts of this program's system, beside those of the packages.
inline std::map<std::string, std::string> SystemFontFiles() {
    TestFont japanese;
    japanese.families = {{0x409, u"Two Names"}, {0x411, u"二つの名前"}};
    japanese.characters = {u'A', u'名', 0x20021};
    TestFont first;
    first.families = {{0x409, u"Member One"}};
    TestFont second;
    second.families = {{0x409, u"Member Two"}};
    second.characters = {u'X'};
    TestFont variable;
    variable.families = {{0x409, u"Variable"}};
    variable.isVariable = true;
    TestFont colored;
    colored.families = {{0x409, u"Colored"}};
    colored.isColored = true;
    TestFont nameless;
    nameless.leftOut = {"name"};
    TestFont unknown;
    unknown.families = {{0x409, u"No Permission"}};
    unknown.leftOut = {"OS/2"};
    TestFont umlaut;
    umlaut.families = {{0x409, u"\u00E4hnlich"}};
    TestFont gone; // removed by a test
    gone.families = {{0x409, u"Gone"}};
    std::map<std::string, std::string> files = {
        {"two-names.ttf", japanese.Bytes()},
        {"members.ttc", TestCollection({first, second})},
        {"variable.ttf", variable.Bytes()},
        {"colored.ttf", colored.Bytes()},
        {"Nameless.ttf", nameless.Bytes()},
        {"umlaut.ttf", umlaut.Bytes()},
        {"unknown.ttf", unknown.Bytes()},
        {"gone.ttf", gone.Bytes()},
        {"truncated.ttf", first.Bytes().substr(0, 600)},
        {"text.ttf", "This is no font."},
        {"empty.ttf", ""},
    };
    for (const int permission : {0x0, 0x2, 0x4, 0x6, 0x8, 0x100, 0x104, 0x200}) {
        TestFont font;
        font.families = {{0x409, u"Permission "}};
        for (const char digit : std::to_string(permission))
            font.families[0].second += static_cast<char16_t>(digit);
        font.permission = permission;
        files["permission" + std::to_string(permission) + ".ttf"] = font.Bytes();
    }
    return files;
}

#pragma once

#include "Support/TestFont.h"

#include <FontsAndImages/GdiDeviceContext.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

/// A device context whose protected operations and fields a test sees.
class OpenedDeviceContext : public GdiDeviceContext {
public:
    using GdiDeviceContext::ConvertEmbeddedOpenTypeDataToTtf;
    using GdiDeviceContext::CreateAndSetFont;
    using GdiDeviceContext::GetDeviceContext;
    using GdiDeviceContext::GetUniqueNumberRepresentingATrueTypeFont;
    using GdiDeviceContext::UnSetAndDeleteFont;

    [[nodiscard]] std::vector<void*> Fields() const {
        std::vector<void*> fields(3);
        std::memcpy(fields.data(), static_cast<const GdiDeviceContext*>(this), sizeof(GdiDeviceContext));
        return fields;
    }
};

inline TestFont SomeFont(const char16_t* family = u"Made Up") {
    TestFont font;
    font.families = {{0x409, family}};
    return font;
}

/// The fonts of this program's system, beside those of the packages.
inline std::map<std::string, std::string> DeviceContextFonts() {
    TestFont tamil = SomeFont(u"A Tamil Face");
    tamil.characters = {0x0BB9};
    TestFont forbidden = SomeFont(u"Forbidden");
    forbidden.permission = 2;
    TestFont whole = SomeFont(u"Whole Only");
    whole.permission = 0x100;
    return {{"made-up.ttf", SomeFont().Bytes()},
            {"tamil.ttf", tamil.Bytes()},
            {"forbidden.ttf", forbidden.Bytes()},
            {"whole.ttf", whole.Bytes()},
            {"members.ttc", TestCollection({SomeFont(u"Member One"), SomeFont(u"Member Two")})}};
}

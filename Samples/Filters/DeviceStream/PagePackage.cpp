#include "PagePackage.h"

#include "PathData.h"

#include <ComSupport/ReportWarning.h>
#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <atlcomcli.h>

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t mostKept = std::size_t{32} << 20;

constexpr std::string_view contentTypes =
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="fdseq" ContentType="application/vnd.ms-package.xps-fixeddocumentsequence+xml"/>)"
    R"(<Default Extension="fdoc" ContentType="application/vnd.ms-package.xps-fixeddocument+xml"/>)"
    R"(<Default Extension="fpage" ContentType="application/vnd.ms-package.xps-fixedpage+xml"/>)"
    R"(<Default Extension="dict" ContentType="application/vnd.ms-package.xps-resourcedictionary+xml"/>)"
    R"(<Default Extension="ttf" ContentType="application/vnd.ms-opentype"/>)"
    R"(<Default Extension="odttf" ContentType="application/vnd.ms-package.obfuscated-opentype"/>)"
    R"(<Default Extension="png" ContentType="image/png"/>)"
    R"(<Default Extension="jpg" ContentType="image/jpeg"/>)"
    R"(<Default Extension="jpeg" ContentType="image/jpeg"/>)"
    R"(<Default Extension="tif" ContentType="image/tiff"/>)"
    R"(<Default Extension="wdp" ContentType="image/vnd.ms-photo"/></Types>)";

constexpr std::string_view packageRelationships =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="R1" Type="http://schemas.microsoft.com/xps/2005/06/fixedrepresentation" )"
    R"(Target="/page-package.fdseq"/></Relationships>)";

constexpr std::string_view sequence =
    R"(<FixedDocumentSequence xmlns="http://schemas.microsoft.com/xps/2005/06">)"
    R"(<DocumentReference Source="/page-package.fdoc"/></FixedDocumentSequence>)";

std::string NameOf(IPartBase& part) {
    CComBSTR uri;
    ThrowIfFailed(part.GetUri(&uri));
    return CPStringUtils::narrowToStdString(uri);
}

std::string Read(IPartBase& part) {
    CComPtr<IPrintReadStream> stream;
    ThrowIfFailed(part.GetStream(&stream));
    std::string bytes;
    std::array<char, 0x10000> buffer;
    BOOL atEnd = FALSE;
    while (!atEnd) {
        ULONG read = 0;
        ThrowIfFailed(stream->ReadBytes(buffer.data(), static_cast<ULONG>(buffer.size()), &read, &atEnd));
        if (read == 0) break;
        bytes.append(buffer.data(), read);
    }
    return bytes;
}

// libgxps leaves out a picture that names a color profile: "{ColorConvertedBitmap picture profile}". It is
// drawn as it stands instead, in the colors that it has without the profile.
std::string WithoutProfiles(std::string markup) {
    constexpr std::string_view start = "{ColorConvertedBitmap ";
    std::string without;
    std::size_t done = 0;
    for (std::size_t at = markup.find(start); at != std::string::npos; at = markup.find(start, done)) {
        const std::size_t end = markup.find_first_of("}\"'", at);
        const std::size_t name = markup.find_first_not_of(' ', at + start.size());
        const std::size_t nameEnd = markup.find_first_of(" }", name);
        if (end == std::string::npos || markup[end] != '}' || nameEnd > end) break; // not as it has to be
        without.append(markup, done, at - done).append(markup, name, nameEnd - name);
        done = end + 1;
    }
    if (done == 0) return markup;
    without.append(markup, done);
    return without;
}

// The markup of a page or a dictionary as the renderer takes it.
std::string ForRenderer(std::string markup, const std::string& name) {
    if (!PathData::AreFiguresReadable(markup))
        ThrowFailure<CPException>(
            [&] { return name + " has a path with figures that are none: the page cannot be imaged"; });
    return WithoutProfiles(std::move(markup));
}

// libgxps reads these and says nothing of a picture that it cannot read.
bool IsDrawn(std::string_view picture) {
    constexpr std::string_view starts[] = {"\x89PNG", "\xFF\xD8", std::string_view("II*\0", 4),
                                           std::string_view("MM\0*", 4)};
    return std::ranges::any_of(starts, [&](std::string_view start) { return picture.starts_with(start); });
}

std::string AttributeText(std::string_view text) {
    std::string escaped;
    for (const char unit : text) {
        if (unit == '&')
            escaped += "&amp;";
        else if (unit == '<')
            escaped += "&lt;";
        else if (unit == '"')
            escaped += "&quot;";
        else
            escaped += unit;
    }
    return escaped;
}

} // namespace

std::shared_ptr<const CheckedBytes> ResourceBytes::Of(const std::string& name, IPartBase& part) {
    if (const auto known = m_kept.find(name); known != m_kept.end()) return known->second;
    std::string content = Read(part);
    if (CComQIPtr<IPartResourceDictionary>(&part)) content = ForRenderer(std::move(content), name);
    if (CComQIPtr<IPartImage>(&part) && !IsDrawn(content))
        ReportWarning("pictures of kinds that the renderer does not know are missing in the stream");
    const auto bytes = std::make_shared<CheckedBytes>(std::move(content));
    const std::size_t size = bytes->bytes.size();
    if (m_size + size > mostKept) {
        m_kept.clear();
        m_size = 0;
    }
    if (size <= mostKept) {
        m_size += size;
        m_kept.emplace(name, bytes);
    }
    return bytes;
}

PagePackage::PagePackage(IFixedPage& page, ResourceBytes& resources) {
    const std::string pageName = NameOf(page);
    AddStructure(pageName);
    Add(pageName, ForRenderer(Read(page), pageName));
    CComPtr<IXpsPartIterator> parts;
    ThrowIfFailed(page.GetXpsPartIterator(&parts));
    for (parts->Reset(); !parts->IsDone(); parts->Next()) {
        CComBSTR uri;
        CComPtr<IUnknown> part;
        ThrowIfFailed(parts->Current(&uri, &part));
        const CComQIPtr<IPartBase> resource(part);
        if (!resource || CComQIPtr<IPartPrintTicket>(part)) continue;
        const std::string name = CPStringUtils::narrowToStdString(uri);
        m_parts.emplace_back(name.substr(1), resources.Of(name, *resource));
    }
}

void PagePackage::Add(const std::string& name, std::string content) {
    m_parts.emplace_back(name.substr(1), std::make_shared<CheckedBytes>(std::move(content)));
}

void PagePackage::AddStructure(const std::string& pageName) {
    Add("/[Content_Types].xml", std::string(contentTypes));
    Add("/_rels/.rels", std::string(packageRelationships));
    Add("/page-package.fdseq", std::string(sequence));
    Add("/page-package.fdoc",
        R"(<FixedDocument xmlns="http://schemas.microsoft.com/xps/2005/06"><PageContent Source=")" +
            AttributeText(pageName) + R"("/></FixedDocument>)");
}

void PagePackage::Write(MemoryFile& file) const {
    file.Rewind();
    StoredArchive archive(file);
    for (const auto& [name, content] : m_parts)
        archive.Add(name, *content);
    archive.Finish();
    file.Truncate();
}

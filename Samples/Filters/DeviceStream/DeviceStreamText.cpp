#include "DeviceStreamText.h"

#include "DevicePrologue.h"

#include <cmath>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view universalExit = "\x1B%-12345X";

// Some families begin their header with the escape sequence themselves.
bool BringsExit(const CXString& pjl) { return pjl.Find(L'\x1B') == 0; }

// A job that PJL opens, with a name or without, must be closed there.
bool OpensJob(const CXString& pjl) {
    const std::wstring_view text = pjl.View();
    return text.starts_with(L"@PJL JOB ") || text.find(L"\n@PJL JOB ") != std::wstring_view::npos ||
           text.find(L"@PJL JOB\n") != std::wstring_view::npos;
}

std::string Points(double points) {
    std::string text = std::to_string(points); // six digits
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

// As the page-level commands round it.
int PointsOf(int microns) { return static_cast<int>(std::floor(microns / 25400.0 * 72.0 + 0.5)); }

PostScriptPageLevelPDLHelper PageLevelOf(const CPString& productData) {
    if (productData.isEmpty()) return {};
    return PostScriptPageLevelPDLHelper(productData);
}

} // namespace

DeviceStreamText::DeviceStreamText(StreamText& out, const DeviceInstructions& instructions,
                                   const CPString& productData)
    : m_out(out), m_instructions(instructions), m_hasProductData(!productData.isEmpty()),
      m_pageLevel(PageLevelOf(productData)) {}

void DeviceStreamText::Begin(const CXString& title) {
    if (!BringsExit(m_instructions.pjlCommands)) m_out.Add(universalExit);
    m_out.AddUtf8(m_instructions.pjlCommands);
    m_out.Add("@PJL ENTER LANGUAGE=POSTSCRIPT\n");
    m_out.Add("%!PS-Adobe-3.0\n%%Title: (");
    m_out.AddUtf8(title);
    m_out.Add(")\n%%LanguageLevel: 3\n%%Pages: (atend)\n%%EndComments\n%%BeginProlog\n");
    m_out.Add(Samples::devicePrologue);
    m_out.Add("%%EndProlog\n%%BeginSetup\n");
    m_out.AddUtf8(m_instructions.setupCommands);
    m_out.Add("%%EndSetup\n");
}

void DeviceStreamText::AddMediaChanges(const PageMedia& media) {
    std::vector<CXString> changes = PageMedia::Changes(m_media, media);
    m_media = media;
    if (changes.empty()) return;
    m_out.AddUtf8(m_hasProductData ? m_pageLevel.GenerateOcptAndProductSpecificPDLPageLevelPostScript(changes)
                                   : m_pageLevel.GenerateOcptBasedPageLevelPostScript(changes));
}

void DeviceStreamText::AddPage(const PageImage& page, const PageMedia& media) {
    const std::string number = std::to_string(++m_pages);
    m_out.Add("%%Page: " + number + " " + number + "\n%%BeginPageSetup\n");
    AddMediaChanges(media);
    const double rise = PointsOf(media.size.height) - page.size.height;
    m_out.Add("%%EndPageSetup\nsave\n0 " + Points(rise) + " translate\n%%BeginDocument: page\n");
    m_out.Add(page.postScript);
    m_out.Add("%%EndDocument\nrestore\n");
}

void DeviceStreamText::End() {
    m_out.Add("%%Trailer\n%%Pages: " + std::to_string(m_pages) + "\n");
    m_out.AddUtf8(m_instructions.trailerComments);
    m_out.Add("%%EOF\n");
    m_out.Add(universalExit);
    if (OpensJob(m_instructions.pjlCommands)) {
        m_out.Add("@PJL EOJ\n");
        m_out.Add(universalExit);
    }
    m_out.Flush();
}

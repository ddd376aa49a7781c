#include "AnnotationMarkup.h"

#include "MarkupText.h"

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <numbers>

namespace {

constexpr const wchar_t* fallbackColor = L"#808080";

/// A color as pages have it: six or eight hexadecimal digits behind a number sign.
std::wstring Color(const CXString& wanted) {
    const std::wstring_view text = wanted.View();
    const bool isColor = (text.size() == 7 || text.size() == 9) && text[0] == L'#' &&
                         text.find_first_not_of(L"0123456789abcdefABCDEF", 1) == std::wstring_view::npos;
    return isColor ? std::wstring(text) : fallbackColor;
}

/// In hundredths of the em square, as Indices have them.
double Hundredths(LONG length) { return static_cast<double>(length) * 100 / TextShaper::unitsPerEm; }

/// The glyphs cluster by cluster. A character with one glyph needs no word about its cluster.
std::wstring Indices(const GlyphRun& run) {
    std::wstring indices;
    for (std::size_t unit = 0; unit < run.clusters.size();) {
        const WORD first = run.clusters[unit];
        std::size_t next = unit;
        while (next < run.clusters.size() && run.clusters[next] == first)
            ++next;
        const std::size_t end = next < run.clusters.size() ? run.clusters[next] : run.glyphs.size();
        if (next - unit != 1 || end - first != 1)
            indices += L'(' + std::to_wstring(next - unit) + L':' + std::to_wstring(end - first) + L')';
        for (std::size_t index = first; index < end; ++index) {
            const GlyphRun::Glyph& glyph = run.glyphs[index];
            (indices += std::to_wstring(glyph.id)) += L',';
            AppendNumber(indices, Hundredths(glyph.advance));
            if (glyph.offset.du != 0 || glyph.offset.dv != 0) {
                indices += L',';
                AppendNumbers(indices, Hundredths(glyph.offset.du), Hundredths(glyph.offset.dv));
            }
            indices += L';';
        }
        unit = next;
    }
    if (!indices.empty()) indices.pop_back();
    return indices;
}

} // namespace

AnnotationMarkup::AnnotationMarkup(Gdiplus::SizeF page, std::wstring prefix)
    : m_page(page), m_prefix(std::move(prefix)) {}

// A canvas of its own turns the whole, and makes it one piece to see through.
void AnnotationMarkup::OpenCanvas(std::wstring& markup, const AnnotationElementSettings& element,
                                  const AnnotationPlacement& placement) const {
    ((markup += L'<') += m_prefix) += L"Canvas";
    if (placement.angle != 0) {
        const double angle = placement.angle * std::numbers::pi / 180;
        const double cosine = std::cos(angle);
        const double sine = std::sin(angle);
        const double x = placement.box.X + placement.box.Width / 2;
        const double y = placement.box.Y + placement.box.Height / 2;
        markup += L" RenderTransform=\"";
        AppendNumbers(markup, cosine, sine, -sine, cosine, x - x * cosine + y * sine,
                      y - x * sine - y * cosine);
        markup += L'"';
    }
    markup += L" Opacity=\"";
    AppendNumber(markup, std::clamp(element.opacity, 0.0F, 1.0F));
    markup += L"\">";
}

void AnnotationMarkup::CloseCanvas(std::wstring& markup) const {
    ((markup += L"</") += m_prefix) += L"Canvas>";
}

void AnnotationMarkup::AppendText(std::wstring& markup, const PageAnnotation& annotation,
                                  const AnnotationTextLayout& layout) const {
    const AnnotationPlacement placement = PlaceAnnotation(annotation.element, m_page, layout.size);
    OpenCanvas(markup, annotation.element, placement);
    float y = placement.box.Y + layout.ascent;
    for (const AnnotationTextLayout::Line& line : layout.lines) {
        float x = placement.box.X;
        for (const GlyphRun& run : line.runs) {
            AppendRun(markup, annotation, layout, run, x, y);
            x += layout.InXpsUnits(run.width);
        }
        y += layout.lineHeight;
    }
    CloseCanvas(markup);
}

void AnnotationMarkup::AppendRun(std::wstring& markup, const PageAnnotation& annotation,
                                 const AnnotationTextLayout& layout, const GlyphRun& run, float x,
                                 float y) const {
    ((markup += L'<') += m_prefix) += L"Glyphs FontUri=\"";
    AppendEscaped(markup, annotation.fontPartName.View(), true);
    markup += L"\" FontRenderingEmSize=\"";
    AppendNumber(markup, layout.emSize);
    markup += L"\" OriginX=\"";
    AppendNumber(markup, run.isRightToLeft ? x + layout.InXpsUnits(run.width) : x);
    markup += L"\" OriginY=\"";
    AppendNumber(markup, y);
    (markup += L"\" Fill=\"") += Color(annotation.element.color);
    if (run.isRightToLeft) markup += L"\" BidiLevel=\"1";
    markup += L"\" UnicodeString=\"";
    if (run.text.starts_with(L'{')) markup += L"{}"; // or it would be taken for a reference
    AppendEscaped(markup, run.text, true);
    ((markup += L"\" Indices=\"") += Indices(run)) += L"\"/>";
}

void AnnotationMarkup::AppendPicture(std::wstring& markup, const PageAnnotation& annotation,
                                     const Picture& picture) const {
    const Gdiplus::SizeF size = annotation.pictureSize;
    const AnnotationPlacement placement = PlaceAnnotation(annotation.element, m_page, size);
    const Gdiplus::RectF& box = placement.box;
    OpenCanvas(markup, annotation.element, placement);
    ((markup += L'<') += m_prefix) += L"Path Data=\"M ";
    AppendNumbers(markup, box.X, box.Y);
    markup += L" L ";
    AppendNumbers(markup, box.X + box.Width, box.Y);
    markup += L" L ";
    AppendNumbers(markup, box.X + box.Width, box.Y + box.Height);
    markup += L" L ";
    AppendNumbers(markup, box.X, box.Y + box.Height);
    ((markup += L" Z\"><") += m_prefix) += L"Path.Fill><";
    (markup += m_prefix) += L"ImageBrush ImageSource=\"";
    AppendEscaped(markup, picture.partName, true);
    markup += L"\" ViewboxUnits=\"Absolute\" ViewportUnits=\"Absolute\" Viewbox=\"";
    AppendNumbers(markup, 0, 0, picture.size.Width, picture.size.Height);
    markup += L"\" Viewport=\"";
    AppendNumbers(markup, box.X, box.Y, box.Width, box.Height);
    (((markup += L"\"/></") += m_prefix) += L"Path.Fill></") += m_prefix;
    markup += L"Path>";
    CloseCanvas(markup);
}

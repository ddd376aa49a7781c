#include "Commands/Commands.h"
#include "Commands/StampPlan.h"
#include "Common/HostError.h"
#include "Parts/XpsVocabulary.h"

#include <FontsAndImages/GdiDeviceContext.h>
#include <Package/PackageReader.h>
#include <Packages/XpsObjectModelWrapper.h>

#include <atlcomcli.h>
#include <oleauto.h>

#include <algorithm>
#include <filesystem>

namespace OvPipeline {

namespace {

constexpr int anyCharset = 1;

// What the platform said of the failure behind an operation; empty where it said nothing.
std::string TakeErrorText() {
    CComPtr<IErrorInfo> information;
    CComBSTR text;
    if (GetErrorInfo(0, &information) == S_OK && information) information->GetDescription(&text);
    return Utf8Argument(text);
}

// The words say which part of the job is at fault, where one is.
[[noreturn]] void ThrowRefusal(const CommandOptions& options, HRESULT result, const std::string& otherwise) {
    const std::string text = TakeErrorText();
    throw InputError(result, options.job.name, text.empty() ? otherwise : text);
}

class Stamping {
public:
    Stamping(const CommandOptions& options, ShownOutput& out, ShownOutput& errors)
        : m_options(options), m_out(out), m_errors(errors), m_plan(MakeStampPlan(options)),
          m_job(OvPlatform::PackageReader::Open(options.job.path, {}, {}, options.job.name)) {}

    void Run() {
        SetErrorInfo(0, nullptr);
        if (const HRESULT result = m_package.ReadPackageFromFile(Wide(m_options.job.path.string()).c_str());
            FAILED(result))
            ThrowRefusal(m_options, result, "the package cannot be read");
        m_pages = m_package.GetTotalNumberOfPages();
        if (m_pages == 0) throw InputError(E_FAIL, m_options.job.name, "its first document has no pages");
        const std::string what = m_plan.picture ? StampPicture() : StampText();
        WarnOfSignature();
        Write();
        Tell(what);
    }

private:
    std::string StampText() {
        CXString text(Wide(m_options.text).c_str());
        CXString face(Wide(m_plan.font.empty() ? "Arial" : m_plan.font).c_str());
        GdiDeviceContext fonts;
        if (m_plan.font.empty()) face = fonts.FindBestFontForDisplayingString(text, face);
        const std::string faceName = Utf8Argument(face);
        const bool hasAll = fonts.CanFontDisplayString(text, face);
        const CXString part(Wide(FreeFontName(*m_job, m_options.text + '\n' + faceName)).c_str());
        SetErrorInfo(0, nullptr);
        if (!m_package.AddTextToPages(part, text, m_plan.at, m_plan.color, face, anyCharset, m_plan.size,
                                      m_options.firstPage))
            ThrowRefusal(m_options, E_FAIL,
                         "the text cannot be put on its pages: the font " + faceName +
                             " cannot be had, may not be embedded, or a page does not take it");
        if (!hasAll) WarnOf(m_options, m_errors)("the font " + faceName + " may lack characters of the text");
        return "the text \"" + m_options.text + "\" in " + faceName + ", " + std::to_string(m_plan.size) +
               " points";
    }

    std::string StampPicture() {
        const PlacedPicture& picture = *m_plan.picture;
        const CXString part(Wide(FreePictureName(*m_job)).c_str());
        SetErrorInfo(0, nullptr);
        if (!m_package.AddImageToPages(part, Wide(picture.file).c_str(), picture.place, picture.whole,
                                       m_plan.opacity, m_options.firstPage))
            ThrowRefusal(m_options, E_FAIL, "the picture " + picture.file + " cannot be put on its pages");
        return "the picture " + picture.file;
    }

    // What is stamped is not what was signed.
    void WarnOfSignature() const {
        for (const auto& relationship : m_job->Relationships("/"))
            if (RelationOf(relationship.type) == Relation::SignatureOrigin)
                return WarnOf(m_options, m_errors)("its digital signatures do not hold for what is written");
    }

    void Write() {
        SetErrorInfo(0, nullptr);
        if (m_package.WritePackageToFile(Wide(m_plan.output).c_str())) return;
        // Parts that nobody looked at are read here: either side may be at fault.
        const std::string text = TakeErrorText();
        throw HostError(E_FAIL, m_plan.output,
                        m_options.job.name + ": " +
                            (text.empty() ? m_plan.output + " cannot be written" : text));
    }

    void Tell(const std::string& what) {
        if (m_options.quiet) return;
        const DWORD stamped = m_options.firstPage ? 1 : m_pages;
        m_out.Line(m_plan.output + ": " + what + " on " +
                   (stamped == m_pages ? Counted(stamped, "page")
                                       : std::to_string(stamped) + " of " + Counted(m_pages, "page")));
        const auto documents =
            std::count_if(m_job->Parts().begin(), m_job->Parts().end(), [](const auto& part) {
                return KindOf(part.contentType, {}) == PartKind::Document;
            });
        if (documents > 1)
            m_out.Line("  only the first of " + std::to_string(documents) + " documents has it");
    }

    const CommandOptions& m_options;
    ShownOutput& m_out;
    ShownOutput& m_errors;
    StampPlan m_plan;
    std::shared_ptr<const OvPlatform::PackageReader> m_job;
    XpsObjectModelWrapper m_package;
    DWORD m_pages = 0;
};

} // namespace

int StampCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    Stamping(options, out, errors).Run();
    return ExitOk;
}

} // namespace OvPipeline

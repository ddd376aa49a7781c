#include "Ppd/PpdText.h"

#include "Options/OptionTable.h"

#include <cups/cups.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>

namespace OvPrintServer {

namespace {

constexpr std::size_t mostOfName = 40; // as PPDs have it, both
constexpr std::size_t mostOfText = 80;
constexpr std::size_t mostOfLine = 255; // readers refuse a PPD with a longer one
constexpr long mostOfPassword = mostOfLine - sizeof "*cupsJobPassword: ''" + 1;
constexpr const char* deviceStream = "application/vnd.ov-device-stream";

// What has a keyword in the PPD, beside papers and their sizes.
struct PpdOption {
    const char* keyword;
    const char* text;
};
constexpr PpdOption options[] = {
    {"InputSlot", "Paper Tray"},  {"MediaType", "Paper Type"},  {"Duplex", "Two-Sided"},
    {"ColorModel", "Color Mode"}, {"Resolution", "Resolution"}, {"OutputBin", "Output Bin"},
    {"Stapling", "Staple"},       {"Punch", "Punch"},           {"Fold", "Fold"},
};

const OptionRow& RowOf(std::string_view keyword) {
    for (const OptionRow& row : GetOptionRows())
        if (row.name == keyword) return row;
    throw std::logic_error("no option " + std::string(keyword));
}

double Points(long microns) { return static_cast<double>(microns) * 72 / 25400; }

std::string Decimal(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", number);
    return text;
}

// What may be a choice of a PPD.
std::string NameFor(std::string_view name) {
    std::string result;
    for (const char c : name)
        if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
            c == '.')
            result += c;
    return result.substr(0, mostOfName);
}

// What people read of it: one line, nothing that ends it in a PPD, whole characters.
std::string TextFor(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        result +=
            byte < 0x20 || byte == 0x7F || c == '/' || c == ':' || c == '"' || c == '<' || c == '>' ? ' ' : c;
    }
    if (result.size() <= mostOfText) return result;
    std::size_t end = mostOfText;
    while (end > 0 && (static_cast<unsigned char>(result[end]) & 0xC0) == 0x80)
        --end;
    return result.substr(0, end);
}

std::string PathLine(const char* keyword, const std::string& what, const std::string& path) {
    const bool isWritable =
        std::ranges::none_of(path, [](unsigned char c) { return c < 0x20 || c == 0x7F || c == '"'; });
    if (!isWritable) throw std::invalid_argument(what + " has characters that no PPD can hold: " + path);
    std::string line = std::string("*") + keyword + ": \"" + path + "\"";
    if (line.size() > mostOfLine)
        throw std::invalid_argument(what + " has a path of " + std::to_string(path.size()) +
                                    " bytes, too long for a line of a PPD: " + path);
    return line;
}

struct Choice {
    std::string name;
    std::string text;
    const OfferedOption* option;
};

// Of one feature, each name once.
class Choices {
public:
    void Add(Choice choice) {
        if (!m_names.insert(choice.name).second) return;
        m_byOption.emplace(choice.option->localName, m_all.size());
        m_all.push_back(std::move(choice));
    }
    const std::vector<Choice>& All() const { return m_all; }
    const Choice* Find(std::string_view option) const {
        const auto found = m_byOption.find(option);
        return found == m_byOption.end() ? nullptr : &m_all[found->second];
    }

private:
    std::vector<Choice> m_all;
    std::set<std::string> m_names;
    std::map<std::string_view, std::size_t> m_byOption;
};

class Writer {
public:
    explicit Writer(const QueueOffer& offer) : m_offer(offer) {}

    std::string Write(const PpdWishes& wishes) {
        WriteHead(wishes);
        WritePapers();
        for (const PpdOption& option : options)
            WriteOption(option);
        WriteFinishings();
        WriteConstraints();
        return std::move(m_text);
    }

private:
    template <class... Pieces>
    void Line(const Pieces&... pieces) {
        ((m_text += pieces), ...);
        m_text += '\n';
    }

    std::string PropertyText(const wchar_t* name, const std::string& otherwise) const {
        const auto found = m_offer.Queue().DriverProperties().find(name);
        if (found == m_offer.Queue().DriverProperties().end()) return otherwise;
        const auto* const text = std::get_if<std::wstring>(&found->second);
        if (text == nullptr) return otherwise;
        std::string plain; // names of products stand in fields that hold ASCII alone
        for (const wchar_t c : *text)
            plain += c >= 0x20 && c < 0x7F && c != L'(' && c != L')' ? static_cast<char>(c) : ' ';
        return TextFor(plain);
    }

    void WriteHead(const PpdWishes& wishes) {
        const std::string product = PropertyText(L"ProductName", "Printer");
        const OfferedFeature* const colors = m_offer.Feature("PageOutputColor");
        const bool hasColor = colors != nullptr && colors->Find("Color") != nullptr;
        Line("*PPD-Adobe: \"4.3\"");
        Line("*FormatVersion: \"4.3\"");
        Line("*FileVersion: \"1.0\"");
        Line("*LanguageVersion: English");
        Line("*LanguageEncoding: UTF-8");
        Line("*PCFileName: \"OVQUEUE.PPD\"");
        Line("*Manufacturer: \"ov-pipeline\"");
        Line("*Product: \"(", product, ")\"");
        Line("*ModelName: \"", product, "\"");
        Line("*ShortNickName: \"", product.substr(0, 31), "\"");
        Line("*NickName: \"", product, ", ovtoprinter\"");
        Line("*PSVersion: \"(3010.000) 0\"");
        Line("*LanguageLevel: \"3\"");
        Line("*ColorDevice: ", hasColor ? "True" : "False");
        Line("*DefaultColorSpace: ", hasColor ? "RGB" : "Gray");
        Line("*FileSystem: False");
        Line("*LandscapeOrientation: Plus90");
        Line("*TTRasterizer: Type42");
        Line("*cupsVersion: 2.4");
        Line("*cupsManualCopies: False");
        if (const auto* const copies = m_offer.Parameter(copiesParameter); copies != nullptr && copies->max)
            Line("*cupsMaxCopies: ", std::to_string(*copies->max));
        // A sign of any kind for each that a password may have: so clients see that there are such jobs.
        const auto* const password = m_offer.Parameter(passcodeParameter);
        if (m_offer.Feature(passcodeFeature) != nullptr && password != nullptr &&
            password->max.value_or(0) > 0)
            Line("*cupsJobPassword: \"",
                 std::string(static_cast<std::size_t>(std::min(*password->max, mostOfPassword)), '*'), "\"");
        Line("*cupsFilter2: \"application/vnd.ms-xpsdocument ", deviceStream, " 0 ovtoprinter\"");
        Line("*cupsFilter2: \"application/oxps ", deviceStream, " 0 ovtoprinter\"");
        Line("*cupsFilter2: \"application/pdf ", deviceStream, " 10 ovtoprinter\"");
        Line(PathLine("ovQueue", "the folder", wishes.queue.string()));
        if (!wishes.pipeline.empty())
            Line(PathLine("ovPipeline", "the configuration", wishes.pipeline.string()));
    }

    // ---- Papers

    static std::string PaperName(long width, long height) {
        const pwg_media_t* const media =
            pwgMediaForSize(static_cast<int>(width / 10), static_cast<int>(height / 10));
        if (media != nullptr && media->ppd != nullptr) return NameFor(media->ppd);
        return "w" + std::to_string(std::lround(Points(width))) + "h" +
               std::to_string(std::lround(Points(height)));
    }

    void WritePapers() {
        const OfferedFeature* const feature = m_offer.Feature(mediaSizeFeature);
        if (feature == nullptr) throw std::invalid_argument("the queue offers no paper");
        struct Paper {
            std::string name;
            std::string text;
            double width;
            double height;
        };
        std::vector<Paper> papers;
        std::set<std::string> names;
        std::string standard;
        for (const OfferedOption& option : feature->options) {
            const auto width = option.Number("MediaSizeWidth");
            const auto height = option.Number("MediaSizeHeight");
            if (!width || !height || *width <= 0 || *height <= 0) continue;
            const std::string name = PaperName(*width, *height);
            if (!names.insert(name).second) continue;
            papers.push_back({name, TextFor(option.displayName), Points(*width), Points(*height)});
            if (feature->byDefault == &option || standard.empty()) standard = name;
            m_choices[std::string(mediaSizeFeature)].Add({name, option.displayName, &option});
        }
        if (papers.empty()) throw std::invalid_argument("the queue offers no paper");
        for (const char* const keyword : {"PageSize", "PageRegion"}) {
            Line("*OpenUI *", keyword, "/Paper Size: PickOne");
            Line("*OrderDependency: 10 AnySetup *", keyword);
            Line("*Default", keyword, ": ", standard);
            for (const Paper& paper : papers)
                Line("*", keyword, " ", paper.name, "/", paper.text, ": \"<</PageSize[", Decimal(paper.width),
                     " ", Decimal(paper.height), "]>>setpagedevice\"");
            Line("*CloseUI: *", keyword);
        }
        const PaperMargins& margins = m_offer.Margins();
        Line("*DefaultImageableArea: ", standard);
        for (const Paper& paper : papers)
            Line("*ImageableArea ", paper.name, "/", paper.text, ": \"", Decimal(Points(margins.left)), " ",
                 Decimal(Points(margins.bottom)), " ", Decimal(paper.width - Points(margins.right)), " ",
                 Decimal(paper.height - Points(margins.top)), "\"");
        Line("*DefaultPaperDimension: ", standard);
        for (const Paper& paper : papers)
            Line("*PaperDimension ", paper.name, "/", paper.text, ": \"", Decimal(paper.width), " ",
                 Decimal(paper.height), "\"");
        WriteCustomPaper(*feature);
    }

    void WriteCustomPaper(const OfferedFeature& feature) {
        const auto custom = std::ranges::find_if(feature.options, &OfferedOption::IsCustom);
        if (custom == feature.options.end()) return;
        const OfferedParameter* width = nullptr;
        const OfferedParameter* height = nullptr;
        for (const OfferedScore& score : custom->scores)
            (score.localName == "MediaSizeWidth" ? width : height) =
                m_offer.Parameter(LocalPart(score.parameter));
        if (width == nullptr || height == nullptr || !width->min || !width->max || !height->min ||
            !height->max)
            return;
        const PaperMargins& margins = m_offer.Margins();
        Line("*VariablePaperSize: True");
        Line("*MaxMediaWidth: \"", Decimal(Points(*width->max)), "\"");
        Line("*MaxMediaHeight: \"", Decimal(Points(*height->max)), "\"");
        Line("*NonUIOrderDependency: 10 AnySetup *CustomPageSize");
        Line("*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]>>setpagedevice\"");
        Line("*ParamCustomPageSize Width: 1 points ", Decimal(Points(*width->min)), " ",
             Decimal(Points(*width->max)));
        Line("*ParamCustomPageSize Height: 2 points ", Decimal(Points(*height->min)), " ",
             Decimal(Points(*height->max)));
        Line("*ParamCustomPageSize WidthOffset: 3 points 0 0");
        Line("*ParamCustomPageSize HeightOffset: 4 points 0 0");
        Line("*ParamCustomPageSize Orientation: 5 int 0 0");
        Line("*HWMargins: ", Decimal(Points(margins.left)), " ", Decimal(Points(margins.bottom)), " ",
             Decimal(Points(margins.right)), " ", Decimal(Points(margins.top)));
    }

    // ---- Other options

    static std::string ResolutionName(const OfferedOption& option) {
        const auto x = option.Number("ResolutionX");
        const auto y = option.Number("ResolutionY");
        if (!x || !y) return {};
        return std::to_string(*x) + (*x == *y ? "" : "x" + std::to_string(*y)) + "dpi";
    }

    static std::string ChoiceName(const OptionRow& row, const OfferedOption& option) {
        if (row.how == How::Resolution) return ResolutionName(option);
        for (const OptionWord& word : row.words)
            if (word.option == option.localName) return std::string(word.word);
        return NameFor(option.localName);
    }

    // In words of the server's own a printer's options may be one: both greys are Gray.
    static bool HasOwnWords(const OptionRow& row) { return row.name == "Duplex" || row.name == "ColorModel"; }

    void WriteOption(const PpdOption& ppd) {
        const OptionRow& row = RowOf(ppd.keyword);
        const OfferedFeature* const feature = m_offer.Feature(row.setting);
        if (feature == nullptr) return;
        Choices& choices = m_choices[std::string(row.setting)];
        std::string standard;
        for (const OfferedOption& option : feature->options) {
            const bool hasOwnName = !HasOwnWords(row) && row.how != How::Resolution;
            std::string name = hasOwnName ? NameFor(option.localName) : ChoiceName(row, option);
            // A name that a PPD does not hold whole is none that a job could choose.
            if (name.empty() || (hasOwnName && !AreAlike(name, option.localName))) continue;
            if (feature->byDefault == &option) standard = name;
            choices.Add({std::move(name), TextFor(option.displayName), &option});
        }
        if (choices.All().size() < 2) return; // nothing to choose
        if (standard.empty()) standard = choices.All().front().name;
        Line("*OpenUI *", ppd.keyword, "/", ppd.text, ": PickOne");
        Line("*OrderDependency: 20 AnySetup *", ppd.keyword);
        Line("*Default", ppd.keyword, ": ", standard);
        for (const Choice& choice : choices.All())
            Line("*", ppd.keyword, " ", choice.name, "/", choice.text, ": \"\"");
        Line("*CloseUI: *", ppd.keyword);
        m_keywords[std::string(row.setting)] = ppd.keyword;
    }

    const Choice* FindChoice(const std::string& feature, std::string_view option) const {
        const auto found = m_choices.find(feature);
        return found == m_choices.end() ? nullptr : found->second.Find(option);
    }

    // The attribute's numbers, so that clients see them offered.
    void WriteFinishings() {
        std::set<int> written;
        for (const FinishingWord& word : GetFinishingWords()) {
            const int number = ippEnumValue("finishings", std::string(word.word).c_str());
            const auto keyword = m_keywords.find(std::string(word.feature));
            const Choice* const choice = FindChoice(std::string(word.feature), word.option);
            if (number <= 0 || keyword == m_keywords.end() || choice == nullptr ||
                !written.insert(number).second)
                continue;
            Line("*cupsIPPFinishings ", std::to_string(number), "/", std::string(word.word), ": \"*",
                 keyword->second, " ", choice->name, "\"");
        }
    }

    // Of two features each, as PPDs have them; what else there is, the ticket's validation sees to.
    void WriteConstraints() {
        m_keywords[std::string(mediaSizeFeature)] = "PageSize";
        for (const OfferedConstraint& constraint : m_offer.Constraints()) {
            if (constraint.choices.size() != 2) continue;
            const auto& one = constraint.choices[0];
            const auto& other = constraint.choices[1];
            const auto first = m_keywords.find(one.feature);
            const auto second = m_keywords.find(other.feature);
            if (first == m_keywords.end() || second == m_keywords.end()) continue;
            for (const std::string& left : one.options)
                for (const std::string& right : other.options) {
                    const Choice* const leftChoice = FindChoice(one.feature, left);
                    const Choice* const rightChoice = FindChoice(other.feature, right);
                    if (leftChoice == nullptr || rightChoice == nullptr) continue;
                    Line("*UIConstraints: *", first->second, " ", leftChoice->name, " *", second->second, " ",
                         rightChoice->name);
                    Line("*UIConstraints: *", second->second, " ", rightChoice->name, " *", first->second,
                         " ", leftChoice->name);
                }
        }
    }

    const QueueOffer& m_offer;
    std::string m_text;
    std::map<std::string, Choices> m_choices;      // by the feature
    std::map<std::string, std::string> m_keywords; // of the PPD, by the feature
};

} // namespace

std::string PpdText(const QueueOffer& offer, const PpdWishes& wishes) { return Writer(offer).Write(wishes); }

} // namespace OvPrintServer

#include "Options/PaperOptions.h"

#include "Options/GivenOptions.h"
#include "Options/OptionTable.h"
#include "Options/OptionValue.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace OvPrintServer {

namespace {

constexpr const char* noSuchPaper = "the printer has no such paper";
constexpr std::size_t mostDigits = 7; // of a length: what is longer is no paper

} // namespace

void PaperOptions::TakeSize(const std::string& value) { m_draft.Answer(ChooseSize(value), noSuchOption); }

void PaperOptions::TakeMedia(const std::string& value) {
    const std::string name = m_draft.OptionName();
    for (const std::string& piece : Pieces(value)) {
        m_draft.Begin(name, piece);
        if (!ChooseSize(piece) && !ChooseSource(piece) && !ChooseType(piece)) m_draft.Leave(noSuchPaper);
    }
}

void PaperOptions::TakeCollection(const std::string& value) {
    const std::string name = m_draft.OptionName();
    const GivenOptions members(value.c_str());
    const auto take = [&](const char* member, bool (PaperOptions::*choose)(const std::string&)) {
        const std::string* const found = members.Find(member);
        m_draft.Begin(name, member);
        if (found != nullptr && !(this->*choose)(*found)) m_draft.Leave(noSuchPaper);
    };
    take("media-size", &PaperOptions::ChooseDimensions);
    take("media-size-name", &PaperOptions::ChooseSize);
    take("media-source", &PaperOptions::ChooseSource);
    take("media-type", &PaperOptions::ChooseType);
    take("media-color", &PaperOptions::ChooseColor);
}

bool PaperOptions::ChooseSize(const std::string& name) {
    const std::optional<PaperSize> size = FindPaperSize(name);
    return size && ChooseSize(*size);
}

bool PaperOptions::ChooseSize(const PaperSize& size) {
    const OfferedFeature* const feature = m_offer.Feature(mediaSizeFeature);
    if (feature == nullptr) return false;
    if (const OfferedOption* const option = FindPaper(*feature, size))
        return m_draft.Choose(mediaSizeFeature, option);
    const auto custom = std::ranges::find_if(feature->options, &OfferedOption::IsCustom);
    return custom != feature->options.end() && ChooseCustom(*custom, size);
}

bool PaperOptions::ChooseCustom(const OfferedOption& custom, const PaperSize& size) {
    std::vector<std::pair<std::string, std::string>> parameters;
    for (const OfferedScore& score : custom.scores) {
        const std::string parameter(LocalPart(score.parameter));
        const std::string value =
            std::to_string(score.localName == "MediaSizeWidth" ? size.width : size.height);
        const OfferedParameter* const rules = m_offer.Parameter(parameter);
        if (rules == nullptr || !rules->ProblemOf(value).empty()) return false;
        parameters.emplace_back(parameter, value);
    }
    if (m_draft.Has(mediaSizeFeature)) return true;
    for (const auto& [parameter, value] : parameters)
        m_draft.Set(parameter, value);
    return m_draft.Choose(mediaSizeFeature, &custom);
}

bool PaperOptions::ChooseDimensions(const std::string& collection) {
    const GivenOptions size(collection.c_str());
    const std::string* const x = size.Find("x-dimension");
    const std::string* const y = size.Find("y-dimension");
    if (x == nullptr || y == nullptr || x->size() > mostDigits || y->size() > mostDigits) return false;
    const auto microns = [](const std::string& text) {
        return std::strtol(text.c_str(), nullptr, 10) * micronsOfPwgUnit;
    };
    return ChooseSize(PaperSize{microns(*x), microns(*y)});
}

bool PaperOptions::ChooseSource(const std::string& value) {
    const OfferedFeature* const feature = m_offer.Feature(mediaSourceFeature);
    return feature != nullptr &&
           m_draft.Choose(mediaSourceFeature, FindByWords(*feature, GetMediaSourceWords(), value));
}

bool PaperOptions::ChooseType(const std::string& value) {
    const OfferedFeature* const feature = m_offer.Feature(mediaTypeFeature);
    return feature != nullptr &&
           m_draft.Choose(mediaTypeFeature, FindByWords(*feature, GetMediaTypeWords(), value));
}

bool PaperOptions::ChooseColor(const std::string& value) {
    const OfferedFeature* const feature = m_offer.Feature(mediaColorFeature);
    return feature != nullptr && m_draft.Choose(mediaColorFeature, feature->Find(value));
}

} // namespace OvPrintServer

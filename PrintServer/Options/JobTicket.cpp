#include "Options/JobTicket.h"

#include "Options/OptionTable.h"
#include "Options/PaperSize.h"
#include "Options/TicketText.h"

#include <EmbeddedSettings/PublicDocSettingsDocument.h>
#include <cups/cups.h>

#include <libxml/xmlstring.h>
#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <set>

namespace OvPrintServer {

namespace {

constexpr const char* noSuchOption = "the printer does not have it";

// "a,b,c" in pieces, without blanks around them.
std::vector<std::string> Pieces(std::string_view list) {
    std::vector<std::string> pieces;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        std::string_view piece = list.substr(0, comma);
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
        while (piece.starts_with(' '))
            piece.remove_prefix(1);
        while (piece.ends_with(' '))
            piece.remove_suffix(1);
        if (!piece.empty()) pieces.emplace_back(piece);
    }
    return pieces;
}

// Some clients write what is enumerated by its number.
std::string Word(std::string_view attribute, const std::string& value) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size()) return value;
    const char* const word = ippEnumString(std::string(attribute).c_str(), number);
    return word != nullptr ? word : value;
}

bool IsTrue(const std::string& value) {
    return strcasecmp(value.c_str(), "true") == 0 || strcasecmp(value.c_str(), "yes") == 0 ||
           strcasecmp(value.c_str(), "on") == 0 || value == "1";
}

// "1-4,7": ascending pages from 1, as the attribute has them.
bool ArePages(const std::string& list) {
    const std::vector<std::string> pieces = Pieces(list);
    return !pieces.empty() && std::ranges::all_of(pieces, [](const std::string& piece) {
        unsigned long first = 0;
        const char* const end = piece.data() + piece.size();
        auto at = std::from_chars(piece.data(), end, first);
        if (at.ec != std::errc() || first == 0) return false;
        if (at.ptr == end) return true;
        if (*at.ptr != '-') return false;
        if (at.ptr + 1 == end) return true;
        unsigned long last = 0;
        at = std::from_chars(at.ptr + 1, end, last);
        return at.ec == std::errc() && at.ptr == end && last >= first;
    });
}

struct CaselessOrder {
    bool operator()(const std::string& left, const std::string& right) const {
        return strcasecmp(left.c_str(), right.c_str()) < 0;
    }
};

bool HasControls(const std::string& text) {
    return std::ranges::any_of(text, [](unsigned char c) { return c < 0x20 || c == 0x7F; });
}

class Maker {
public:
    Maker(const QueueOffer& offer, const GivenOptions& options)
        : m_offer(offer), m_options(options), m_text(offer) {}

    JobTicket Make(unsigned copies) {
        for (const OptionRow& row : GetOptionRows()) {
            if (const std::string* const value = m_options.Find(row.name)) Take(row, *value);
        }
        LeaveWhatNoRowTook();
        CountUnknown();
        AddCopies(copies);
        AddSettings();
        if (!m_text.IsEmpty()) m_ticket.xml = m_text.Xml();
        return std::move(m_ticket);
    }

private:
    void Take(const OptionRow& row, const std::string& value) {
        m_option = {std::string(row.name),
                    row.how == How::Passcode ? std::string(row.name) : std::string(row.name) + "=" + value};
        if (!row.filler.empty() && Word(row.name, value) == row.filler) return;
        switch (row.how) {
        case How::Choice:
            return Choose(row, Word(row.name, value));
        case How::Bool:
            return Choose(row, IsTrue(value) ? "true" : "false");
        case How::Size:
            return Answer(ChooseSize(value), noSuchOption);
        case How::Media:
            return TakeMedia(value);
        case How::MediaCol:
            return TakeCollection(value);
        case How::Resolution:
            return ChooseResolution(row.setting, value);
        case How::PagesPerSheet:
            return ChooseByNumber(row.setting, "PagesPerSheet", value);
        case How::Finishings:
            return TakeFinishings(value);
        case How::Setting:
            return TakeSetting(row, Word(row.name, value));
        case How::Passcode:
            return TakePasscode(value);
        case How::Pages:
            if (!ArePages(value)) return Leave("these are no pages");
            m_ticket.pages = value;
            return;
        case How::Obey:
            return TakeObedience(row.name, value);
        }
    }

    // ---- What becomes of an option. One with several rows is left only where none of them could take it.

    void Leave(const std::string& reason) { m_left.push_back({m_option.text, m_option.name, reason}); }
    void Took() { m_taken.insert(m_option.name); }

    void Answer(bool isTaken, const std::string& reason) { isTaken ? Took() : Leave(reason); }

    void LeaveWhatNoRowTook() {
        std::set<std::string> told;
        for (LeftOption& left : m_left)
            if (!m_taken.contains(left.name) && told.insert(left.option).second)
                m_ticket.left.push_back(std::move(left));
    }

    void CountUnknown() {
        std::set<std::string, CaselessOrder> known;
        for (const OptionRow& row : GetOptionRows())
            known.emplace(row.name);
        for (const auto& option : m_options.All())
            if (!known.contains(option.name) && !IsServersOwn(option.name))
                m_ticket.unknown.push_back(option.name);
    }

    // ---- Features

    // The first who asks for a feature has it: attributes stand before keywords.
    bool Choose(std::string_view feature, const OfferedOption* option) {
        if (option == nullptr) return false;
        const std::string path(feature);
        if (m_text.Has(path)) return true;
        m_text.Choose(path, *option);
        m_ticket.asked.push_back({m_option.text, m_option.name, path, option->localName});
        return true;
    }

    const OfferedOption* Find(const OfferedFeature& feature, std::span<const OptionWord> words,
                              std::string_view value) const {
        bool hasWord = false;
        for (const OptionWord& row : words) {
            if (!AreAlike(row.word, value)) continue;
            hasWord = true;
            if (const OfferedOption* const option = feature.Find(row.option)) return option;
        }
        return hasWord ? nullptr : feature.Find(value);
    }

    void Choose(const OptionRow& row, const std::string& value) {
        const OfferedFeature* const feature = m_offer.Feature(row.setting);
        const OfferedOption* const option = feature != nullptr ? Find(*feature, row.words, value) : nullptr;
        const bool isFiller =
            row.filler == fillerOfQueue && option != nullptr && option == feature->byDefault;
        Answer(isFiller || Choose(row.setting, option), noSuchOption);
    }

    void ChooseByNumber(std::string_view name, std::string_view score, const std::string& value) {
        const OfferedFeature* const feature = m_offer.Feature(name);
        const OfferedOption* found = nullptr;
        if (feature != nullptr)
            for (const OfferedOption& option : feature->options)
                if (const auto number = option.Number(score); number && std::to_string(*number) == value)
                    found = &option;
        Answer(Choose(name, found), noSuchOption);
    }

    void ChooseResolution(std::string_view name, const std::string& value) {
        // "600dpi" or "1200x600dpi"
        char* rest = nullptr;
        const long x = std::strtol(value.c_str(), &rest, 10);
        const long y = *rest == 'x' ? std::strtol(rest + 1, &rest, 10) : x;
        if (rest == value.c_str() || strcasecmp(rest, "dpi") != 0) return Leave("this is no resolution");
        const OfferedFeature* const feature = m_offer.Feature(name);
        const OfferedOption* found = nullptr;
        if (feature != nullptr)
            for (const OfferedOption& option : feature->options)
                if (option.Number("ResolutionX") == x && option.Number("ResolutionY") == y) found = &option;
        Answer(Choose(name, found), noSuchOption);
    }

    // ---- Paper

    bool ChooseSize(const std::string& name) {
        const std::optional<PaperSize> size = FindPaperSize(name);
        return size && ChooseSize(*size);
    }

    bool ChooseSize(const PaperSize& size) {
        const OfferedFeature* const feature = m_offer.Feature(mediaSizeFeature);
        if (feature == nullptr) return false;
        if (const OfferedOption* const option = FindPaper(*feature, size))
            return Choose(mediaSizeFeature, option);
        const auto custom = std::ranges::find_if(feature->options, &OfferedOption::IsCustom);
        if (custom == feature->options.end()) return false;
        std::vector<std::pair<std::string, std::string>> parameters;
        for (const OfferedScore& score : custom->scores) {
            const std::string parameter(LocalPart(score.parameter));
            const std::string value =
                std::to_string(score.localName == "MediaSizeWidth" ? size.width : size.height);
            const OfferedParameter* const rules = m_offer.Parameter(parameter);
            if (rules == nullptr || !rules->ProblemOf(value).empty()) return false;
            parameters.emplace_back(parameter, value);
        }
        if (m_text.Has(std::string(mediaSizeFeature))) return true;
        for (const auto& [parameter, value] : parameters)
            m_text.Set(parameter, value);
        return Choose(mediaSizeFeature, &*custom);
    }

    bool ChooseSource(const std::string& value) {
        const OfferedFeature* const feature = m_offer.Feature(mediaSourceFeature);
        return feature != nullptr && Choose(mediaSourceFeature, Find(*feature, GetMediaSourceWords(), value));
    }

    bool ChooseType(const std::string& value) {
        const OfferedFeature* const feature = m_offer.Feature(mediaTypeFeature);
        return feature != nullptr && Choose(mediaTypeFeature, Find(*feature, GetMediaTypeWords(), value));
    }

    // "a4,tray-1,stationery"
    void TakeMedia(const std::string& value) {
        for (const std::string& piece : Pieces(value)) {
            m_option.text = m_option.name + "=" + piece;
            if (ChooseSize(piece) || ChooseSource(piece) || ChooseType(piece)) continue;
            Leave("the printer has no such paper");
        }
    }

    // "{media-size={x-dimension=21000 y-dimension=29700} media-type=stationery}", in hundredths of a
    // millimetre.
    void TakeCollection(const std::string& value) {
        const GivenOptions members(value.c_str());
        const auto take = [&](const char* name, const std::function<bool(const std::string&)>& choose) {
            const std::string* const member = members.Find(name);
            m_option.text = m_option.name + "=" + name;
            if (member != nullptr && !choose(*member)) Leave("the printer has no such paper");
        };
        take("media-size", [&](const std::string& member) {
            const GivenOptions size(member.c_str());
            const std::string* const x = size.Find("x-dimension");
            const std::string* const y = size.Find("y-dimension");
            const auto microns = [](const std::string& text) {
                return std::strtol(text.c_str(), nullptr, 10) * 10;
            };
            return x != nullptr && y != nullptr && x->size() < 8 && y->size() < 8 &&
                   ChooseSize(PaperSize{microns(*x), microns(*y)});
        });
        take("media-size-name", [&](const std::string& member) { return ChooseSize(member); });
        take("media-source", [&](const std::string& member) { return ChooseSource(member); });
        take("media-type", [&](const std::string& member) { return ChooseType(member); });
        take("media-color", [&](const std::string& member) {
            const OfferedFeature* const feature = m_offer.Feature(mediaColorFeature);
            return feature != nullptr && Choose(mediaColorFeature, feature->Find(member));
        });
    }

    // ---- Lists, numbers, settings

    void TakeFinishings(const std::string& value) {
        for (const std::string& piece : Pieces(value)) {
            m_option.text = m_option.name + "=" + piece;
            const std::string word = Word(m_option.name, piece);
            bool isTaken = false;
            for (const FinishingWord& row : GetFinishingWords()) {
                if (isTaken || row.word != word) continue;
                if (row.feature.empty()) {
                    isTaken = true; // among others it says nothing
                } else if (const OfferedFeature* const feature = m_offer.Feature(row.feature)) {
                    // Not one that is merely alike: a staple stands in one corner.
                    const auto option =
                        std::ranges::find(feature->options, row.option, &OfferedOption::localName);
                    isTaken = option != feature->options.end() && Choose(row.feature, &*option);
                }
            }
            if (!isTaken) Leave(noSuchOption);
        }
    }

    void SetParameter(std::string_view name, const std::string& value) {
        const std::string parameter(name);
        const OfferedParameter* const rules = m_offer.Parameter(name);
        if (rules == nullptr) return Leave(noSuchOption);
        if (const std::string problem = rules->ProblemOf(value); !problem.empty()) return Leave(problem);
        m_text.Set(parameter, value);
        m_ticket.asked.push_back({m_option.text, m_option.name, parameter, value});
        Took();
    }

    void TakeSetting(const OptionRow& row, const std::string& value) {
        if (m_settings.contains(std::string(row.setting))) return Took();
        bool hasWord = false;
        for (const OptionWord& word : row.words) {
            if (word.word != value) continue;
            hasWord = true;
            if (!m_offer.HasSetting(row.setting, word.option)) continue;
            m_settings[std::string(row.setting)] = word.option;
            return Took();
        }
        Leave(hasWord ? noSuchOption : "the server sees to it, or nobody does");
    }

    // A job that is to wait for its owner is not printed as one that is not.
    void TakePasscode(const std::string& value) {
        const std::string* const encryption = m_options.Find("job-password-encryption");
        if (encryption != nullptr && !encryption->empty() && *encryption != "none")
            throw RefusedOption(
                "job-password: the printer must know the password, and it came encrypted by " + *encryption);
        const OfferedFeature* const feature = m_offer.Feature(passcodeFeature);
        const OfferedParameter* const parameter = m_offer.Parameter(passcodeParameter);
        const OfferedOption* const on = feature != nullptr ? feature->Find("On") : nullptr;
        if (on == nullptr || parameter == nullptr)
            throw RefusedOption("job-password: the printer holds no jobs for a password");
        if (HasControls(value) || xmlCheckUTF8(reinterpret_cast<const xmlChar*>(value.c_str())) == 0)
            throw RefusedOption("job-password: the password has characters that no printer takes");
        if (const std::string problem = parameter->ProblemOf(value); !problem.empty())
            throw RefusedOption("job-password: the password cannot be used: " + problem);
        m_text.Choose(std::string(passcodeFeature), *on);
        m_text.Set(std::string(passcodeParameter), value);
        m_ticket.asked.push_back({m_option.text, m_option.name, std::string(passcodeFeature), on->localName});
    }

    void TakeObedience(std::string_view name, const std::string& value) {
        if (name == "ipp-attribute-fidelity")
            m_ticket.obeysAll = IsTrue(value);
        else
            std::ranges::move(Pieces(value), std::inserter(m_ticket.obeyed, m_ticket.obeyed.end()));
    }

    void AddCopies(unsigned copies) {
        if (copies <= 1) return; // what the queue's own ticket says holds
        m_option = {"copies", "copies=" + std::to_string(copies)};
        const std::size_t before = m_left.size();
        SetParameter(copiesParameter, std::to_string(copies));
        if (m_left.size() > before) m_ticket.left.push_back(m_left.back());
    }

    // Over those of the queue, which the parameter would hide.
    void AddSettings() {
        if (m_settings.empty()) return;
        CPString text(m_offer.DefaultOf(settingsParameter).c_str());
        PublicDocSettingsDocument::Parser parser = PublicDocSettingsDocument::Parse(text);
        if (!parser) parser = PublicDocSettingsDocument::Parse(PublicDocSettingsDocument::GetEmptyDocument());
        const PublicDocSettingsDocument document(parser.get());
        for (const auto& [name, value] : m_settings)
            document.SetString(CXString(name.c_str()), L"keyword", true, CXString(value.c_str()));
        text = PublicDocSettingsDocument::GetText(*parser);
        m_text.Set(std::string(settingsParameter), std::string(text.view()));
    }

    struct CurrentOption {
        std::string name;
        std::string text; // for messages: never that of a password
    };

    const QueueOffer& m_offer;
    const GivenOptions& m_options;
    TicketText m_text;
    JobTicket m_ticket;
    CurrentOption m_option;
    std::vector<LeftOption> m_left;
    std::set<std::string> m_taken;
    std::map<std::string, std::string> m_settings;
};

} // namespace

bool JobTicket::MustObey(const std::string& name) const { return obeysAll || obeyed.contains(name); }

JobTicket MakeJobTicket(const QueueOffer& offer, const GivenOptions& options, unsigned copies) {
    return Maker(offer, options).Make(copies);
}

} // namespace OvPrintServer

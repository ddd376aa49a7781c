#include "Options/JobTicket.h"

#include "Options/OptionTable.h"
#include "Options/OptionValue.h"
#include "Options/PaperOptions.h"
#include "Options/TicketDraft.h"

#include <EmbeddedSettings/PublicDocSettingsDocument.h>

#include <libxml/xmlstring.h>
#include <strings.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace OvPrintServer {

namespace {

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
        : m_offer(offer), m_options(options), m_draft(offer), m_papers(offer, m_draft) {}

    JobTicket Make(unsigned copies) {
        for (const OptionRow& row : GetOptionRows())
            if (const std::string* const value = m_options.Find(row.name)) Take(row, *value);
        CountUnknown();
        AddCopies(copies);
        AddSettings();
        m_draft.MoveTo(m_ticket);
        return std::move(m_ticket);
    }

private:
    void Take(const OptionRow& row, const std::string& value) {
        row.how == How::Passcode ? m_draft.BeginSecret(row.name) : m_draft.Begin(row.name, value);
        if (!row.filler.empty() && WordOf(row.name, value) == row.filler) return;
        switch (row.how) {
        case How::Choice:
            return Choose(row, WordOf(row.name, value));
        case How::Bool:
            return Choose(row, IsTrue(value) ? "true" : "false");
        case How::Size:
            return m_papers.TakeSize(value);
        case How::Media:
            return m_papers.TakeMedia(value);
        case How::MediaCol:
            return m_papers.TakeCollection(value);
        case How::Resolution:
            return ChooseResolution(row.setting, value);
        case How::PagesPerSheet:
            return ChooseByNumber(row.setting, "PagesPerSheet", value);
        case How::Finishings:
            return TakeFinishings(row.name, value);
        case How::Setting:
            return TakeSetting(row, WordOf(row.name, value));
        case How::Passcode:
            return TakePasscode(value);
        case How::Pages:
            if (!ArePages(value)) return m_draft.Leave("these are no pages");
            m_ticket.pages = value;
            return;
        case How::Obey:
            return TakeObedience(row.name, value);
        }
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

    void Choose(const OptionRow& row, const std::string& value) {
        const OfferedFeature* const feature = m_offer.Feature(row.setting);
        const OfferedOption* const option =
            feature != nullptr ? FindByWords(*feature, row.words, value) : nullptr;
        const bool isFiller =
            row.filler == fillerOfQueue && option != nullptr && option == feature->byDefault;
        m_draft.Answer(isFiller || m_draft.Choose(row.setting, option), noSuchOption);
    }

    void ChooseByNumber(std::string_view name, std::string_view score, const std::string& value) {
        const OfferedFeature* const feature = m_offer.Feature(name);
        const OfferedOption* found = nullptr;
        if (feature != nullptr)
            for (const OfferedOption& option : feature->options)
                if (const auto number = option.Number(score); number && std::to_string(*number) == value)
                    found = &option;
        m_draft.Answer(m_draft.Choose(name, found), noSuchOption);
    }

    void ChooseResolution(std::string_view name, const std::string& value) {
        const std::optional<Resolution> wanted = FindResolution(value);
        if (!wanted) return m_draft.Leave("this is no resolution");
        const OfferedFeature* const feature = m_offer.Feature(name);
        const OfferedOption* found = nullptr;
        if (feature != nullptr)
            for (const OfferedOption& option : feature->options)
                if (option.Number("ResolutionX") == wanted->x && option.Number("ResolutionY") == wanted->y)
                    found = &option;
        m_draft.Answer(m_draft.Choose(name, found), noSuchOption);
    }

    // ---- Lists, numbers, settings

    void TakeFinishings(std::string_view name, const std::string& value) {
        for (const std::string& piece : Pieces(value)) {
            m_draft.Begin(name, piece);
            const std::string word = WordOf(name, piece);
            bool isTaken = false;
            for (const FinishingWord& row : GetFinishingWords()) {
                if (isTaken || row.word != word) continue;
                if (row.feature.empty()) {
                    isTaken = true; // among others it says nothing
                } else if (const OfferedFeature* const feature = m_offer.Feature(row.feature)) {
                    // Not one that is merely alike: a staple stands in one corner.
                    const auto option =
                        std::ranges::find(feature->options, row.option, &OfferedOption::localName);
                    isTaken = option != feature->options.end() && m_draft.Choose(row.feature, &*option);
                }
            }
            if (!isTaken) m_draft.Leave(noSuchOption);
        }
    }

    void TakeSetting(const OptionRow& row, const std::string& value) {
        if (m_settings.contains(std::string(row.setting))) return m_draft.Took();
        bool hasWord = false;
        for (const OptionWord& word : row.words) {
            if (word.word != value) continue;
            hasWord = true;
            if (!m_offer.HasSetting(row.setting, word.option)) continue;
            m_settings[std::string(row.setting)] = word.option;
            return m_draft.Took();
        }
        m_draft.Leave(hasWord ? noSuchOption : "the server sees to it, or nobody does");
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
        m_draft.Choose(passcodeFeature, on);
        m_draft.Set(passcodeParameter, value);
    }

    void TakeObedience(std::string_view name, const std::string& value) {
        if (name == "ipp-attribute-fidelity")
            m_ticket.obeysAll = IsTrue(value);
        else
            std::ranges::move(Pieces(value), std::inserter(m_ticket.obeyed, m_ticket.obeyed.end()));
    }

    void AddCopies(unsigned copies) {
        if (copies <= 1) return; // what the queue's own ticket says holds
        const std::string value = std::to_string(copies);
        m_draft.Begin("copies", value);
        const OfferedParameter* const rules = m_offer.Parameter(copiesParameter);
        if (rules == nullptr) return m_draft.Leave(noSuchOption);
        if (const std::string problem = rules->ProblemOf(value); !problem.empty())
            return m_draft.Leave(problem);
        m_draft.Ask(copiesParameter, value);
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
        m_draft.Set(settingsParameter, std::string(text.view()));
    }

    const QueueOffer& m_offer;
    const GivenOptions& m_options;
    TicketDraft m_draft;
    PaperOptions m_papers;
    JobTicket m_ticket;
    std::map<std::string, std::string> m_settings;
};

} // namespace

bool JobTicket::MustObey(const std::string& name) const { return obeysAll || obeyed.contains(name); }

JobTicket MakeJobTicket(const QueueOffer& offer, const GivenOptions& options, unsigned copies) {
    return Maker(offer, options).Make(copies);
}

} // namespace OvPrintServer

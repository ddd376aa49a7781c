#include "FeatureAccess/FeatureRules.h"

#include "DataModel/PrintSchemaKeywordLiterals.h"
#include "Finishing/OcptImportAndExport.h"
#include "Media/MediaUtilities.h"

#include <Encryption/DataEncrypter.h>
#include <LowLevelFacilities/Failures/CPException.h>
#include <SystemServices/Printer.h>

#include <type_traits>

using namespace DataModelIds;
using Kind = FeatureQuestionKind;
using Oddity = FeatureRule::Oddity;

namespace {

tagValueEnum ValueIfSpecified(const FeatureAnswer<tagValueEnum>& answer, tagValueEnum otherwise) {
    return answer.isSpecified && answer.value != VAL_UNSPECIFIED ? answer.value : otherwise;
}

template <typename Value>
RecordedAnswer Recorded(const FeatureQuestion& question, const FeatureAnswer<Value>& answer) {
    RecordedAnswer recorded{.question = question, .isSpecified = answer.isSpecified, .source = answer.source};
    if constexpr (std::is_same_v<Value, CollectionState>)
        recorded.value = answer.value == CollectionState::Specified;
    else if constexpr (!std::is_same_v<Value, ByteBuffer>)
        recorded.value = answer.value;
    return recorded;
}

int InMicrons(const Dimension& dimension) {
    return dimension.GetValue(Dimension::Micron).GetNearestIntValue();
}

} // namespace

// ---- By the table

FeatureAnswer<tagValueEnum> FeatureRules::Option(const FeaturePath& path) const {
    const FeatureRule* const rule = FindFeatureRule(Kind::Option, path);
    if (rule == nullptr) return {};
    switch (rule->oddity) {
    case Oddity::CoverOptions:
        return CoverOptions(*rule);
    case Oddity::HolePunch:
        return HolePunch(*rule);
    case Oddity::JobType:
        return JobType(*rule);
    case Oddity::PageLayout:
        return PageLayout(*rule);
    case Oddity::Sides:
        return Sides(*rule);
    case Oddity::Staple:
        return Staple(*rule);
    default:
        return m_places.Ask<tagValueEnum>(*rule, path);
    }
}

FeatureAnswer<int> FeatureRules::Integer(const FeaturePath& path) const {
    const bool isOfJob = path == FeaturePath(FEAT_WHOLE_JOB, path.Feature()); // as if it stood alone
    const FeaturePath asked = isOfJob ? path.Feature() : path;
    const FeatureRule* const rule = FindFeatureRule(Kind::Integer, asked);
    if (rule == nullptr) return {};
    return rule->oddity == Oddity::Copies ? Copies(*rule) : m_places.Ask<int>(*rule, asked);
}

FeatureAnswer<Dimension> FeatureRules::Length(const FeaturePath& path) const {
    return Ask<Dimension>(Kind::Length, path);
}

FeatureAnswer<CXString> FeatureRules::Text(const FeaturePath& path) const {
    const FeatureRule* const rule = FindFeatureRule(Kind::Text, path);
    if (rule == nullptr) return {};
    return rule->oddity == Oddity::JobName ? JobName(*rule) : m_places.Ask<CXString>(*rule, path);
}

FeatureAnswer<bool> FeatureRules::Flag(const FeaturePath& path) const {
    const FeatureRule* const rule = FindFeatureRule(Kind::Flag, path);
    return rule != nullptr && rule->oddity == Oddity::StartSheet ? StartSheet() : FeatureAnswer<bool>();
}

FeatureAnswer<ByteBuffer> FeatureRules::Password(const FeaturePath& path) const {
    const FeatureRule* const rule = FindFeatureRule(Kind::Password, path);
    return rule != nullptr && rule->oddity == Oddity::JobPassword ? JobPassword(*rule)
                                                                  : FeatureAnswer<ByteBuffer>();
}

FeatureAnswer<CollectionState> FeatureRules::Collection(const FeaturePath& path) const {
    return Ask<CollectionState>(Kind::Collection, path);
}

FeatureAnswer<unsigned int> FeatureRules::Entries(const FeaturePath& path) const {
    const FeatureRule* const rule = FindFeatureRule(Kind::Entries, path);
    if (rule == nullptr) return {};
    return rule->oddity == Oddity::AnnotationElements ? AnnotationElements(*rule)
                                                      : m_places.Ask<unsigned int>(*rule, path);
}

RecordedAnswer FeatureRules::Answer(const FeatureQuestion& question) const {
    RecordedAnswer answer = AnswerTo(question);
    answer.isSecret = IsSecretFeature(question.kind, question.path);
    if (answer.isSecret) answer.value = {};
    return answer;
}

RecordedAnswer FeatureRules::AnswerTo(const FeatureQuestion& question) const {
    switch (question.kind) {
    case Kind::Option:
        return Recorded(question, Option(question.path));
    case Kind::Integer:
        return Recorded(question, Integer(question.path));
    case Kind::Length:
        return Recorded(question, Length(question.path));
    case Kind::Text:
        return Recorded(question, Text(question.path));
    case Kind::Flag:
        return Recorded(question, Flag(question.path));
    case Kind::Password:
        return Recorded(question, Password(question.path));
    case Kind::Collection:
        return Recorded(question, Collection(question.path));
    case Kind::Entries:
        return Recorded(question, Entries(question.path));
    case Kind::MediaSize:
        return Recorded(question, MediaSize());
    case Kind::Orientation:
        return Recorded(question, Orientation());
    case Kind::OutputSize:
        return Recorded(question, OutputSize(question.path));
    case Kind::Time:
    case Kind::Bytes:
        break;
    }
    return {.question = question};
}

// ---- Odd options

FeatureAnswer<tagValueEnum> FeatureRules::CoverOptions(const FeatureRule& rule) const {
    const OptionAnswer answer = m_places.Ask<tagValueEnum>(rule, rule.path);
    const bool isChosen = ValueIfSpecified(answer, VAL_UNSPECIFIED) != VAL_UNSPECIFIED;
    return isChosen ? answer : ChosenOption(VAL_COVER_OPTION_NONE, FeatureValueSource::Rule);
}

/// One feature of the ticket says how many holes there are and where; the driver has a feature for counts and
/// one for the positions of each count.
FeatureAnswer<tagValueEnum> FeatureRules::HolePunch(const FeatureRule& rule) const {
    if (!m_places.MayAsk(rule, rule.path)) return {};
    const WantedFeature wanted = m_places.Wanted(rule, rule.path);
    std::optional<OptionAnswer> inTicket = HolePunchOfTicket(wanted.Feature());
    OptionAnswer answer = inTicket ? *inTicket : m_places.Read<tagValueEnum>(rule, wanted);
    m_places.Enforce(rule, wanted, answer); // also what the ticket leaves open
    return answer;
}

std::optional<FeatureAnswer<tagValueEnum>> FeatureRules::HolePunchOfTicket(tagFeatureEnum feature) const {
    if (!m_places.IsSupported(FEAT_MS_JOB_HOLE_PUNCH)) return {};
    OptionAnswer inTicket;
    if (!m_places.Ticket().Ask(m_places.Wanted(FEAT_MS_JOB_HOLE_PUNCH), inTicket)) return {};
    tagValueEnum count = VAL_UNSPECIFIED;
    tagValueEnum twoHoles = VAL_UNSPECIFIED;
    tagValueEnum threeHoles = VAL_UNSPECIFIED;
    tagValueEnum fourHoles = VAL_UNSPECIFIED;
    OcptImportAndExport::DetermineDataModelHolePunchValuesFromPrintTicketValue(
        inTicket.value, m_access.m_holePunchOnOnly, m_access.m_holeCountsOnly,
        m_access.m_anyHolePositionsSupported, m_access.m_twoHoleSupported, m_access.m_threeHoleSupported,
        m_access.m_fourHoleSupported, m_access.m_twoHolePositionsSupported,
        m_access.m_threeHolePositionsSupported, m_access.m_fourHolePositionsSupported, count, twoHoles,
        threeHoles, fourHoles);
    const tagValueEnum value = feature == FEAT_FINISHING_2_HOLE_PUNCH   ? twoHoles
                               : feature == FEAT_FINISHING_3_HOLE_PUNCH ? threeHoles
                               : feature == FEAT_FINISHING_4_HOLE_PUNCH ? fourHoles
                                                                        : count;
    return ChosenOption(value, FeatureValueSource::PrintTicket);
}

/// The ticket's passcode makes a job a secure one, or keeps it from being one. No job is without a type.
FeatureAnswer<tagValueEnum> FeatureRules::JobType(const FeatureRule& rule) const {
    bool isPinOff = false;
    if (m_places.IsSupported(FEAT_MS_PIN_PRINTING)) {
        const CXString pin = m_places.Ticket().GetOption(m_places.Wanted(FEAT_MS_PIN_PRINTING).TicketName());
        if (pin.CompareNoCase(PrintSchema::Keywords::JobPasscode::On) == 0)
            return ChosenOption(VAL_JOB_TYPE_SECURE_PRINT, FeatureValueSource::PrintTicket);
        isPinOff = pin.CompareNoCase(PrintSchema::Keywords::JobPasscode::Off) == 0;
    }
    const WantedFeature wanted = m_places.Wanted(rule, rule.path);
    OptionAnswer answer = m_places.Read<tagValueEnum>(rule, wanted);
    const bool isUnknownText =
        answer.source == FeatureValueSource::PublicDocumentSettings && answer.value == VAL_UNSPECIFIED;
    if (isUnknownText) answer.value = VAL_JOB_TYPE_NORMAL_PRINT; // not the device's default
    m_places.Enforce(rule, wanted, answer);
    if (!answer.isSpecified || answer.value == VAL_JOB_TYPE_NONE)
        return ChosenOption(VAL_JOB_TYPE_NORMAL_PRINT, FeatureValueSource::Rule);
    if (isPinOff && answer.value == VAL_JOB_TYPE_SECURE_PRINT)
        return ChosenOption(VAL_JOB_TYPE_NORMAL_PRINT, FeatureValueSource::PrintTicket);
    return answer;
}

/// The one answer that has a value without being specified: one page, where the ticket knows no layout.
FeatureAnswer<tagValueEnum> FeatureRules::PageLayout(const FeatureRule& rule) const {
    const CXString* const name = m_places.FindSupportedName(rule.path);
    if (name == nullptr) return {VAL_PAGE_LAYOUT_NUP_1, false, FeatureValueSource::None};
    WantedFeature wanted = m_places.Wanted(rule.path);
    wanted.ticketName = name;
    OptionAnswer answer;
    const bool isKnown = m_places.Ticket().Ask(wanted, answer);
    return isKnown ? answer : ChosenOption(VAL_PAGE_LAYOUT_NUP_1, FeatureValueSource::Rule);
}

/// The document settings can say that nobody chose, whatever the ticket holds; what they choose counts only
/// where the ticket is silent.
FeatureAnswer<tagValueEnum> FeatureRules::Sides(const FeatureRule& rule) const {
    if (!m_places.IsSupported(rule.path)) return {};
    const WantedFeature wanted = m_places.Wanted(rule, rule.path);
    FeatureAnswer<CXString> element;
    const bool isInSettings = m_places.Document().Ask(wanted, element);
    if (isInSettings && !element.isSpecified) return {VAL_UNSPECIFIED, false, element.source};
    // The ticket's words are the dictionary's.
    OptionAnswer inTicket;
    m_places.Ticket().Ask(m_places.Wanted(rule.path), inTicket);
    if (inTicket.source == FeatureValueSource::None)
        return isInSettings ? m_places.Document().ToOption(wanted, element) : OptionAnswer();
    const bool isOfSides = rule.words.FindWritten(inTicket.value) != nullptr;
    return isOfSides ? inTicket : OptionAnswer{VAL_UNSPECIFIED, false, inTicket.source};
}

/// Of a device whose ticket says where the staples go, the features for one and for two staples answer.
FeatureAnswer<tagValueEnum> FeatureRules::Staple(const FeatureRule& rule) const {
    if (!m_places.MayAsk(rule, rule.path)) return {};
    const WantedFeature wanted = m_places.Wanted(rule, rule.path);
    const bool hasPositions = m_places.Ticket().IsOffered(
        wanted.TicketName(), PrintSchema::Keywords::JobStapleAllDocuments::StapleTopRight);
    return hasPositions ? OptionAnswer() : m_places.Ask<tagValueEnum>(rule, wanted);
}

// ---- Other odd answers

/// Deliberate: the ticket of a job that supports copies has the last word, with 0 where it says nothing.
FeatureAnswer<int> FeatureRules::Copies(const FeatureRule& rule) const {
    const CXString* const name = m_places.FindSupportedName(rule.path);
    if (name == nullptr) return {};
    return {m_places.Ticket().GetInteger(*name), true, FeatureValueSource::PrintTicket};
}

FeatureAnswer<CXString> FeatureRules::TextOfSettingsOrBytes(const CXString& cpssName,
                                                            tagFeatureEnum feature) const {
    FeatureAnswer<CXString> answer;
    if (m_places.Document().GetText(cpssName, answer) != S_OK)
        m_places.AttributeBytes().Ask(WantedFeature{.path = feature}, answer);
    return answer;
}

/// Deliberate: only a secure job has a name that its user chose; all others have that of the document. The
/// name has none of its own in the settings, so that only the attribute bytes can hold it.
FeatureAnswer<CXString> FeatureRules::JobName(const FeatureRule& rule) const {
    WantedFeature wanted = m_places.Wanted(rule, rule.path);
    wanted.names = m_places.Wanted(FEAT_SECURE_JOB_NAME).names;
    FeatureAnswer<CXString> chosen = m_places.Ask<CXString>(rule, wanted);
    if (chosen.isSpecified && !chosen.value.IsEmpty() &&
        ValueIfSpecified(Option(FEAT_JOB_TYPE), VAL_UNSPECIFIED) == VAL_JOB_TYPE_SECURE_PRINT)
        return chosen;
    const CXString& document = m_access.m_documentName;
    if (document.IsEmpty()) return {};
    return {document, true, FeatureValueSource::Rule};
}

/// The pin of the ticket, or the scrambled password of the settings.
FeatureAnswer<ByteBuffer> FeatureRules::JobPassword(const FeatureRule& rule) const {
    FeatureAnswer<ByteBuffer> answer;
    if (m_places.IsSupported(FEAT_MS_PIN_PRINTING_STRING)) {
        const FeatureAnswer<CXString> pin = Text(FEAT_MS_PIN_PRINTING_STRING);
        if (!pin.value.IsBlank()) {
            answer.value.appendAsUtf8(pin.value);
            answer.isSpecified = true;
            answer.source = pin.source;
            return answer;
        }
    }
    FeatureAnswer<CXString> digits;
    if (!m_places.Document().Ask(m_places.Wanted(rule, rule.path), digits)) return answer;
    if (!digits.isSpecified) digits.value.Empty();
    ByteBuffer scrambled;
    if (!ByteBuffer::ConvertHexBinaryStringToByteBuffer(digits.value, scrambled, true)) return answer;
    try {
        answer.value = DataEncrypter::DecryptStringWithOrvelSimple1(scrambled.getAsCXStringFromUtf8Buffer());
    } catch (const CPExceptionInvalidArgument&) {
        return answer; // It was damaged on the way: no job is to wait for a password that nobody knows.
    }
    answer.isSpecified = digits.isSpecified;
    answer.source = digits.source;
    return answer;
}

FeatureAnswer<bool> FeatureRules::StartSheet() const {
    return {Printer(m_access.m_printer).IsMSSeparatorPageSelected(), true, FeatureValueSource::Queue};
}

FeatureAnswer<unsigned int> FeatureRules::AnnotationElements(const FeatureRule& rule) const {
    const WantedFeature wanted = m_places.Wanted(rule.path);
    FeatureAnswer<unsigned int> answer;
    const bool isInSettings =
        m_places.Document().IsPresent(m_places.Wanted(FEAT_ANNOTATION_COL).DocumentName());
    if (isInSettings)
        m_places.Document().Ask(wanted, answer);
    else
        m_places.AttributeBytes().Ask(wanted, answer);
    return answer;
}

FeatureAnswer<tagValueEnum> FeatureRules::MediaSize() const {
    const FeatureRule* const rule = FindFeatureRule(Kind::MediaSize, FEAT_APPLICATION_MEDIA_SIZE_OPTION);
    if (rule == nullptr) return {};
    FeatureAnswer<CXString> newSize; // It is not taken from this text, but from the attribute bytes.
    m_places.Document().Ask(m_places.Wanted(FEAT_FIT_TO_NEW_SIZE_PRINT_TICKET_KEYWORD), newSize);
    OptionAnswer answer;
    if (newSize.isSpecified)
        m_places.AttributeBytes().Ask(m_places.Wanted({FEAT_MEDIA_COL, FEAT_MEDIA_SIZE_OPTION}), answer);
    else
        answer = m_places.Ask<tagValueEnum>(*rule, rule->path);
    return answer;
}

FeatureAnswer<tagValueEnum> FeatureRules::Orientation() const {
    const OptionAnswer asked = Option(FEAT_MS_ORIENTATION);
    const tagValueEnum value = MediaUtilities::GetEffectiveOrientation(
        ValueIfSpecified(asked, VAL_MS_ORIENTATION_PORTRAIT),
        ValueIfSpecified(Option(FEAT_PAGE_LAYOUT), VAL_UNSPECIFIED),
        ValueIfSpecified(Option(FEAT_BOOKLET), VAL_UNSPECIFIED), InMicrons(m_access.m_firstOutputSize),
        InMicrons(m_access.m_secondOutputSize));
    const bool isAsAsked = asked.isSpecified && asked.value == value;
    return {value, true, isAsAsked ? asked.source : FeatureValueSource::Rule};
}

/// What the caller said of the job; from which place it has that, only the caller knows.
FeatureAnswer<RecordedAnswer::Size> FeatureRules::OutputSize(const FeaturePath& path) const {
    if (path != FeaturePath() && path != FeaturePath(FEAT_WHOLE_JOB)) return {};
    return {{m_access.m_firstOutputSize, m_access.m_secondOutputSize}, true, FeatureValueSource::None};
}

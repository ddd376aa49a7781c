// Lookups in the dictionaries beside the least that they could cost: by text, the same keys in a standard
// hash map that finds the hash of each key ready; by number, an array with the number as its index. Reports
// ratios of one run, and allocations.

#include "Limits.h"

#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

std::size_t allocations = 0;

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

constexpr double textLimit = 1.5;
constexpr double wideTextLimit = 4.0; // narrows the name first
constexpr double numberLimit = 2.0;
constexpr std::size_t questions = 8192;
constexpr int repetitions = 200;

/// A text with its hash right in front of it, as PeerHash expects it.
class HashedText {
public:
    explicit HashedText(std::string_view text)
        : m_bytes(new char[sizeof(std::size_t) + text.size()]), m_size(text.size()) {
        const std::size_t hash = std::hash<std::string_view>{}(text);
        std::memcpy(m_bytes.get(), &hash, sizeof hash);
        std::memcpy(m_bytes.get() + sizeof hash, text.data(), text.size());
    }
    [[nodiscard]] std::string_view View() const { return {m_bytes.get() + sizeof(std::size_t), m_size}; }

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size;
};

struct PeerHash {
    std::size_t operator()(std::string_view text) const noexcept {
        std::size_t hash = 0;
        std::memcpy(&hash, text.data() - sizeof hash, sizeof hash);
        return hash;
    }
};

struct Comparison {
    const char* name;
    double limit;
};

/// The best of many repetitions of each, which take turns so that both see the same machine.
template <typename Own, typename Peer>
bool Compare(const Comparison& comparison, const std::vector<std::size_t>& order, Own own, Peer peer) {
    const auto measure = [&order](auto& find) {
        std::uintptr_t sum = 0;
        const auto start = std::chrono::steady_clock::now();
        for (const std::size_t which : order)
            sum += reinterpret_cast<std::uintptr_t>(find(which));
        const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
        return std::pair(elapsed.count() / static_cast<double>(order.size()), sum);
    };
    double ownBest = 1e300;
    double peerBest = 1e300;
    const std::size_t before = allocations;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        const auto [ownTime, ownSum] = measure(own);
        const auto [peerTime, peerSum] = measure(peer);
        if (ownSum != peerSum) {
            std::printf("%-40s the two find different entries\n", comparison.name);
            return false;
        }
        ownBest = (std::min)(ownBest, ownTime);
        peerBest = (std::min)(peerBest, peerTime);
    }
    const std::size_t allocated = allocations - before;
    std::printf("%-40s %6.2f ns  peer %6.2f ns  allocations %zu\n", comparison.name, ownBest, peerBest,
                allocated);
    Limits::Report(std::string(comparison.name) + ", beside the peer", ownBest / peerBest, comparison.limit);
    return allocated == 0;
}

std::vector<std::size_t> MakeOrder(std::size_t count) {
    std::mt19937 random(20);
    std::vector<std::size_t> order(questions);
    for (std::size_t& which : order)
        which = random() % count;
    return order;
}

/// Asks for each entry by what `own` makes of its number in `entries`, and the peer by the text of its key.
template <typename Entry, typename Own, typename MakeKey>
bool CompareText(const Comparison& comparison, const std::vector<const Entry*>& entries, MakeKey makeKey,
                 Own own) {
    std::vector<HashedText> keys;
    keys.reserve(entries.size());
    std::unordered_map<std::string_view, const Entry*, PeerHash> peer;
    for (const Entry* const entry : entries)
        keys.emplace_back(makeKey(*entry));
    for (std::size_t i = 0; i < entries.size(); ++i)
        peer.emplace(keys[i].View(), entries[i]);
    return Compare(comparison, MakeOrder(entries.size()), own,
                   [&](std::size_t which) { return peer.find(keys[which].View())->second; });
}

template <typename Entry, typename Number, typename Own>
bool CompareNumber(const char* name, const std::vector<const Entry*>& entries, Number Entry::*number,
                   Own own) {
    std::vector<const Entry*> array;
    std::vector<Number> numbers;
    for (const Entry* const entry : entries) {
        const auto index = static_cast<std::size_t>(entry->*number);
        array.resize((std::max)(array.size(), index + 1));
        array[index] = entry;
        numbers.push_back(entry->*number);
    }
    return Compare(
        {name, numberLimit}, MakeOrder(entries.size()),
        [&](std::size_t which) { return own(numbers[which]); },
        [&](std::size_t which) { return array[static_cast<std::size_t>(numbers[which])]; });
}

template <typename Entry, typename Dictionary>
std::vector<const Entry*> AllEntries(const Dictionary& dictionary) {
    std::vector<const Entry*> entries;
    dictionary.GetAllEntries(entries);
    return entries;
}

std::string OptionKey(DataModelIds::tagFeatureEnum feature, const CPString& name) {
    return FormatStdString("%.5d%s", static_cast<int>(feature), name);
}

} // namespace

int main() {
    const auto& features = *NativeXmlConfigFeatureDictionary::Instance();
    const auto& options = *NativeXmlConfigOptionValueDictionary::Instance();
    const auto& cpssOptions = *NativeXmlConfigCpssOptionValueDictionary::Instance();
    const auto allFeatures = AllEntries<NativeXmlConfigFeatureEntry>(features);
    const auto allOptions = AllEntries<NativeXmlConfigOptionValueEntry>(options);
    const auto allCpssOptions = AllEntries<NativeXmlConfigCpssOptionValueEntry>(cpssOptions);

    bool isSound = CompareText(
        {"feature by configuration name", textLimit}, allFeatures,
        [](const auto& entry) { return std::string(entry.xmlConfigFeatureName.view()); },
        [&](std::size_t which) {
            return &features.GetEntryByXmlConfigName(allFeatures[which]->xmlConfigFeatureName.view());
        });
    isSound &= CompareText(
        {"option by configuration name", textLimit}, allOptions,
        [](const auto& entry) { return OptionKey(entry.feature, entry.xmlConfigOptionName); },
        [&](std::size_t which) {
            const NativeXmlConfigOptionValueEntry& entry = *allOptions[which];
            return &options.GetEntryByXmlConfigName(entry.feature, entry.xmlConfigOptionName.view());
        });
    const auto ticketKey = [](const auto& entry) {
        return OptionKey(entry.feature, entry.printTicketOptionName);
    };
    isSound &=
        CompareText({"option by ticket name", textLimit}, allOptions, ticketKey, [&](std::size_t which) {
            const NativeXmlConfigOptionValueEntry& entry = *allOptions[which];
            return &options.GetEntryByPrintTicketName(entry.feature, entry.printTicketOptionName.view());
        });
    std::vector<CXString> wideNames;
    wideNames.reserve(allOptions.size());
    for (const auto* option : allOptions)
        wideNames.emplace_back(option->printTicketOptionName);
    isSound &= CompareText(
        {"option by wide ticket name", wideTextLimit}, allOptions, ticketKey, [&](std::size_t which) {
            return &options.GetEntryByPrintTicketName(allOptions[which]->feature, wideNames[which].View());
        });
    isSound &= CompareText(
        {"option by CPSS name", textLimit}, allCpssOptions,
        [](const auto& entry) { return OptionKey(entry.feature, entry.cpssOptionName); },
        [&](std::size_t which) {
            const NativeXmlConfigCpssOptionValueEntry& entry = *allCpssOptions[which];
            return &cpssOptions.GetEntryByCpssName(entry.feature, entry.cpssOptionName.view());
        });
    isSound &= CompareText(
        {"option by feature and value", textLimit}, allCpssOptions,
        [](const auto& entry) {
            return FormatStdString("%.5d%.5d", static_cast<int>(entry.feature),
                                   static_cast<int>(entry.value));
        },
        [&](std::size_t which) {
            const NativeXmlConfigCpssOptionValueEntry& entry = *allCpssOptions[which];
            return &cpssOptions.GetEntry(entry.feature, entry.value);
        });
    isSound &= CompareNumber("feature by number", allFeatures, &NativeXmlConfigFeatureEntry::feature,
                             [&](auto number) { return &features.GetEntry(number); });
    isSound &= CompareNumber("option by number", allOptions, &NativeXmlConfigOptionValueEntry::value,
                             [&](auto number) { return &options.GetEntry(number); });
    Limits::Report("look-ups that allocate or find another entry", isSound ? 0 : 1, 0);
    return Limits::Conclude();
}

#pragma once

#include "Dictionary/DictionaryIndex.h"
#include "Dictionary/DictionaryKeyTraits.h"
#include "LowLevelFacilities/Failures/CPExceptionDuplicateDictionaryIndexEntry.h"
#include "LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "LowLevelFacilities/Formatter/CPFormat.h"

#include <algorithm>
#include <concepts>
#include <string>
#include <vector>

/// An index in which each key occurs once. Key is CPString or an enumeration; a CPString key is asked for
/// with a std::string_view. Lookups allocate nothing unless they throw, and may run on several threads at
/// once.
template <typename Key, typename Entry>
class DictionaryIndexWithUnique : public DictionaryIndex<Entry> {
public:
    using KeyView = typename DictionaryKeyTraits<Key>::View;

    /// Throws CPExceptionUnknownKeyRequest if the key is absent.
    [[nodiscard]] const Entry& GetEntryRef(KeyView key) const {
        if (const Entry* const entry = m_table.Find(key)) return *entry;
        ThrowUnknownKey(DictionaryKeyTraits<Key>::MakeKey(key), "GetEntryRef", __LINE__);
    }
    [[nodiscard]] Entry& GetNonConstEntryRef(KeyView key) {
        if (Entry* const entry = m_table.Find(key)) return *entry;
        ThrowUnknownKey(DictionaryKeyTraits<Key>::MakeKey(key), "GetNonConstEntryRef", __LINE__);
    }
    /// Null if the key is absent.
    [[nodiscard]] const Entry* FindEntry(KeyView key) const noexcept { return m_table.Find(key); }
    [[nodiscard]] bool IsKeyPresent(KeyView key) const noexcept { return m_table.Find(key) != nullptr; }

    /// The same for a text in two pieces.
    [[nodiscard]] const Entry&
    GetEntryRef(const DictionaryNumberedText& key) const requires std::same_as<Key, CPString> {
        if (const Entry* const entry = m_table.Find(key)) return *entry;
        ThrowUnknownKey(DictionaryKeyTraits<Key>::MakeKey(key), "GetEntryRef", __LINE__);
    }
    [[nodiscard]] const Entry*
    FindEntry(const DictionaryNumberedText& key) const noexcept requires std::same_as<Key, CPString> {
        return m_table.Find(key);
    }

    [[nodiscard]] const Entry* FindEntryWithKeyOf(const Entry& entry) const override {
        return m_table.Find(GetKey(entry, 0));
    }

    void GetAllEntries(std::vector<const Entry*>& entries) const override {
        entries.clear();
        entries.reserve(m_entries.size());
        entries.assign(m_entries.begin(), m_entries.end());
    }

    void AddIndexEntry(Entry* entry, int keyNumber, bool& hasMoreKeys) override {
        Key key = GetKey(*entry, keyNumber);
        if (m_table.Find(key) != nullptr) {
            Throw<CPExceptionDuplicateDictionaryIndexEntry>(
                "An entry already exists in this index with the key=%s! Insertion failed!\r\n", key,
                "AddIndexEntry", __LINE__);
        }
        m_entries.push_back(entry);
        try {
            m_table.Insert(std::move(key), entry);
        } catch (...) {
            m_entries.pop_back();
            throw;
        }
        hasMoreKeys = false;
    }

    void CopyAllEntriesTo(DictionaryIndex<Entry>& other) const override {
        for (Entry* const entry : m_entries)
            AddAllIndexEntries(other, entry);
    }

    void RemoveIndexEntries(const Entry& entry) override {
        const Key key = GetKey(entry, 0);
        const Entry* const stored = m_table.Find(key);
        if (stored == nullptr) ThrowUnknownKey(key, "RemoveIndexEntries", __LINE__);
        m_table.Remove(key);
        std::erase(m_entries, stored);
    }

    void DeleteAllEntries() override {
        m_table.Clear();
        for (const Entry* const entry : m_entries)
            delete entry;
        m_entries.clear();
    }

    [[nodiscard]] int CompareKeys(const Entry& left, const Entry& right) const override {
        const Key leftKey = GetKey(left, 0);
        const Key rightKey = GetKey(right, 0);
        return leftKey < rightKey ? -1 : rightKey < leftKey ? 1 : 0;
    }

    /// The entries under that key, here one or none, in place of what is in the vector.
    virtual void FindEntries(const Key& key, std::vector<const Entry*>& found) const {
        found.clear();
        if (const Entry* const entry = m_table.Find(key)) found.push_back(entry);
    }
    virtual void FindEntries(const Key& key, std::vector<Entry*>& found) {
        found.clear();
        if (Entry* const entry = m_table.Find(key)) found.push_back(entry);
    }
    [[nodiscard]] virtual Key GetKey(const Entry& entry, int keyNumber) const = 0;
    /// The key as messages show it.
    [[nodiscard]] virtual CPString GetKeyText(const Key& key) const {
        return DictionaryKeyTraits<Key>::GetText(key);
    }

private:
    [[noreturn]] void ThrowUnknownKey(const Key& key, const char* operation, int line) const {
        Throw<CPExceptionUnknownKeyRequest>("Could not find the requested entry with key=%s\r\n", key,
                                            operation, line);
    }

    template <typename Failure>
    [[noreturn]] void Throw(const char* message, const Key& key, const char* operation, int line) const {
        const std::string function =
            FormatStdString("DictionaryIndexWithUnique<%s,%s>::%s", DictionaryTypeName<Key>::value,
                            DictionaryTypeName<Entry>::value, operation);
        const DebugContextReference place("UtilitiesDll/Dictionary/DictionaryIndexWithUnique", line,
                                          function.c_str());
        ThrowFailureAt<Failure>(place, [&] { return FormatStdString(message, GetKeyText(key)); });
    }

    typename DictionaryKeyTraits<Key>::template Table<Entry> m_table;
    std::vector<Entry*> m_entries; // in the order of their coming
};

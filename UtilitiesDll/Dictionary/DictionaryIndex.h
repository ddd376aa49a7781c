#pragma once

#include <vector>

/// One way to find the entries of a dictionary. An index refers to entries; which of several indexes owns
/// them is the dictionary's business.
template <typename Entry>
class DictionaryIndex {
public:
    DictionaryIndex() = default;
    DictionaryIndex(const DictionaryIndex&) = delete;
    DictionaryIndex& operator=(const DictionaryIndex&) = delete;
    virtual ~DictionaryIndex() = default;

    /// The stored entry with the key of the given one, or null.
    [[nodiscard]] virtual const Entry* FindEntryWithKeyOf(const Entry& entry) const = 0;
    /// Replaces what is in the vector. Entries come in the order in which they were added.
    virtual void GetAllEntries(std::vector<const Entry*>& entries) const = 0;
    /// Adds the entry under its key of that number, from 0 on, and tells whether it has a further one.
    /// Throws CPExceptionDuplicateDictionaryIndexEntry.
    virtual void AddIndexEntry(Entry* entry, int keyNumber, bool& hasMoreKeys) = 0;
    /// Adds every entry to the other index, under all keys that it has there.
    virtual void CopyAllEntriesTo(DictionaryIndex& other) const = 0;
    /// Throws CPExceptionUnknownKeyRequest.
    virtual void RemoveIndexEntries(const Entry& entry) = 0;
    /// Destroys the entries; for the index that owns them.
    virtual void DeleteAllEntries() = 0;
    /// By key: negative, 0 if equal, positive.
    [[nodiscard]] virtual int CompareKeys(const Entry& left, const Entry& right) const = 0;
    /// Holds a place in the table of operations.
    virtual void Reserved() {}
};

/// Adds the entry to the index under all its keys.
template <typename Entry>
void AddAllIndexEntries(DictionaryIndex<Entry>& index, Entry* entry) {
    bool hasMoreKeys = true;
    for (int keyNumber = 0; hasMoreKeys; ++keyNumber)
        index.AddIndexEntry(entry, keyNumber, hasMoreKeys);
}

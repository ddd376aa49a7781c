#pragma once

#include "Dictionary/DictionaryIndex.h"
#include "SystemServices/UtcTime.h"

#include <windows.h>

#include <memory>
#include <utility>
#include <vector>

/// Entries and the indexes over them. The first index that is added is the primary one: it owns the entries.
/// Whoever adds entries or indexes sees to it that nobody else uses the dictionary meanwhile.
template <typename Entry>
class Dictionary {
public:
    Dictionary() : m_creatorThread(GetCurrentThreadId()) { InitializeCriticalSection(&m_criticalSection); }
    Dictionary(const Dictionary&) = delete;
    Dictionary& operator=(const Dictionary&) = delete;
    ~Dictionary() {
        if (!m_indexes.empty()) m_indexes.front()->DeleteAllEntries();
        m_indexes.clear();
        DeleteCriticalSection(&m_criticalSection);
    }

    /// Fills the index with the entries that are there and keeps it. Gives back a reference to it.
    template <typename Index>
    Index& AddIndex(std::unique_ptr<Index> index) {
        if (!m_indexes.empty()) m_indexes.front()->CopyAllEntriesTo(*index);
        Index& added = *index;
        m_indexes.push_back(std::move(index));
        return added;
    }

    /// Needs an index. Throws CPExceptionDuplicateDictionaryIndexEntry if an index has an entry under one of
    /// its keys. Where the primary index took it before another one refused, it stays.
    void AddEntry(std::unique_ptr<Entry> entry) {
        bool hasMoreKeys = false;
        m_indexes.front()->AddIndexEntry(entry.get(), 0, hasMoreKeys);
        Entry* const owned = entry.release();
        for (std::size_t index = 1; index < m_indexes.size(); ++index)
            AddAllIndexEntries(*m_indexes[index], owned);
    }

    [[nodiscard]] const UtcTime& GetCreationTime() const noexcept { return m_creationTime; }
    [[nodiscard]] DWORD GetCreatorThread() const noexcept { return m_creatorThread; }

private:
    std::vector<std::unique_ptr<DictionaryIndex<Entry>>> m_indexes;
    CRITICAL_SECTION m_criticalSection; // for those who change entries; no lookup takes it
    UtcTime m_creationTime;
    DWORD m_creatorThread;
};

#include "Filter/FilterLiveness.h"

FilterLiveness::FilterLiveness() : m_alive(1) {}

FilterLiveness::~FilterLiveness() = default;

HRESULT FilterLiveness::Continue() { return IsAlive() ? S_OK : HRESULT_FROM_WIN32(ERROR_PRINT_CANCELLED); }

BOOL FilterLiveness::IsAlive() const { return m_alive.load(); }

void FilterLiveness::Cancel() { m_alive.store(0); }

#include "Chain/Links.h"

#include "Parts/DescribePart.h"
#include "Parts/PartFactory.h"

#include <chrono>

namespace OvPipeline {

namespace {

constexpr HRESULT invalidState = HRESULT_FROM_WIN32(ERROR_INVALID_STATE);

} // namespace

HRESULT PartQueue::Send(IUnknown* part) {
    std::unique_lock lock(m_mutex);
    const auto isToWait = [&] {
        return m_parts.size() >= bound && !m_receiverEnded && !m_job->IsStopping() &&
               !m_job->IsStreamAwaited();
    };
    // Looks now and then, since whoever begins to wait for a stream wakes nobody here.
    while (isToWait()) {
        RequireStarted("more parts are sent than are taken before the filters are started");
        m_changed.wait_for(lock, std::chrono::milliseconds(50));
    }
    if (m_job->IsStopping()) return m_job->StopResult();
    if (m_receiverEnded) return S_OK;
    m_parts.emplace_back(part);
    lock.unlock();
    m_changed.notify_all();
    return S_OK;
}

HRESULT PartQueue::Receive(IUnknown** part) {
    CComPtr<IUnknown> next;
    {
        std::unique_lock lock(m_mutex);
        const auto isToWait = [&] { return m_parts.empty() && !m_senderEnded && !m_job->IsStopping(); };
        if (isToWait()) RequireStarted("a part is asked for before the filters are started");
        m_changed.wait(lock, [&] { return !isToWait(); });
        if (m_job->IsStopping()) return m_job->StopResult();
        if (!m_parts.empty()) {
            next = std::move(m_parts.front());
            m_parts.pop_front();
        }
    }
    m_changed.notify_all();
    *part = next.Detach();
    return S_OK;
}

void PartQueue::RequireStarted(const char* problem) const {
    if (!m_job->IsStarted()) throw HostError(invalidState, {}, problem);
}

void PartQueue::EndSending() {
    {
        const std::lock_guard lock(m_mutex);
        m_senderEnded = true;
    }
    m_changed.notify_all();
}

void PartQueue::EndReceiving() {
    std::deque<CComPtr<IUnknown>> dropped;
    {
        const std::lock_guard lock(m_mutex);
        m_receiverEnded = true;
        dropped.swap(m_parts);
    }
    m_changed.notify_all();
}

void PartQueue::Wake() {
    { const std::lock_guard lock(m_mutex); }
    m_changed.notify_all();
}

HRESULT QueueProvider::GetXpsPart(IUnknown** part) {
    if (part == nullptr) return E_POINTER;
    *part = nullptr;
    return Guarded([&] {
        const HRESULT hr = m_queue->Receive(part);
        if (SUCCEEDED(hr)) NoteReceived(*part, m_log, m_taker);
        return hr;
    });
}

HRESULT QueueConsumer::Send(IUnknown* part, bool* once) {
    if (part == nullptr) return E_POINTER;
    return Guarded([&] {
        const std::string what = DescribePart(part);
        if (m_isClosed) throw HostError(invalidState, ThreadPart(), "a part is sent after CloseSender");
        if (once != nullptr && *once)
            throw HostError(invalidState, ThreadPart(), "a second " + what + " is sent");
        Trace& log = m_context->job->Log();
        if (log.IsOn()) log.Step("sends", what);
        const HRESULT hr = m_queue->Send(part);
        if (SUCCEEDED(hr)) ThreadPart() = TakenPart();
        if (SUCCEEDED(hr) && once != nullptr) *once = true;
        return hr;
    });
}

HRESULT QueueConsumer::SendXpsUnknown(IUnknown* part) { return Send(part); }

HRESULT QueueConsumer::SendXpsDocument(IXpsDocument* document) { return Send(document, &m_hasDocument); }

HRESULT QueueConsumer::SendFixedDocumentSequence(IFixedDocumentSequence* sequence) {
    return Send(sequence, &m_hasSequence);
}

HRESULT QueueConsumer::SendFixedDocument(IFixedDocument* document) { return Send(document); }

HRESULT QueueConsumer::SendFixedPage(IFixedPage* page) { return Send(page); }

HRESULT QueueConsumer::CloseSender() {
    // Counts as called whatever fails here.
    const bool wasClosed = m_isClosed.exchange(true);
    return Guarded([&] {
        if (wasClosed) return invalidState;
        Trace& log = m_context->job->Log();
        if (log.IsOn()) log.Step("closes its output");
        return S_OK;
    });
}

HRESULT QueueConsumer::GetNewEmptyPart(PCWSTR uri, REFIID riid, void** part, IPrintWriteStream** stream) {
    if (uri == nullptr || part == nullptr || stream == nullptr) return E_POINTER;
    *part = nullptr;
    *stream = nullptr;
    return Guarded([&] {
        const std::string name = Utf8(uri);
        ThreadPart() = name;
        Trace& log = m_context->job->Log();
        if (log.IsOn()) log.Step("makes", name);
        return MakeNewPart(m_context, name, riid, part, stream, m_sender);
    });
}

} // namespace OvPipeline

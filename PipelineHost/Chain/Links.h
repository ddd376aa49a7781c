#pragma once

#include "Chain/Ends.h"
#include "Parts/PartObject.h"
#include "Streams/FileStreams.h"
#include "Streams/SpooledBytes.h"

#include <atlcomcli.h>

#include <condition_variable>
#include <deque>

namespace OvPipeline {

/// Parts on their way from one thread to the next; a sender waits while the queue is full. The receiver sees
/// the end when the sending filter has succeeded, not when it closes its output: a filter that fails closes
/// its output too, and nobody shall take its parts for a whole job.
class PartQueue {
public:
    static constexpr std::size_t bound = 8;

    explicit PartQueue(std::shared_ptr<JobState> job) : m_job(std::move(job)) {}

    /// What is sent to a receiver that is gone is dropped. A stopping job's result where the job stops. While
    /// a receiver waits for a part's bytes, the queue takes what comes. Throws HostError where a filter would
    /// wait before the job is started, as Receive does.
    HRESULT Send(IUnknown* part);
    /// Waits for a part; null at the end.
    HRESULT Receive(IUnknown** part);
    void EndSending();
    void EndReceiving();
    /// Wakes all who wait here, for a job that stops.
    void Wake();

private:
    void RequireStarted(const char* problem) const;

    std::shared_ptr<JobState> m_job;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<CComPtr<IUnknown>> m_parts;
    bool m_senderEnded = false;
    bool m_receiverEnded = false;
};

/// The end of a queue at which a filter takes parts.
class QueueProvider final : public ComObject<IXpsDocumentProvider> {
public:
    /// taker: the filter that takes them.
    QueueProvider(std::shared_ptr<PartQueue> queue, std::shared_ptr<JobState> job,
                  std::shared_ptr<const StreamMaker> taker)
        : m_queue(std::move(queue)), m_job(std::move(job)), m_log(m_job->Log()), m_taker(std::move(taker)) {}
    HRESULT STDMETHODCALLTYPE GetXpsPart(IUnknown** part) override;

private:
    ~QueueProvider() override = default;

    std::shared_ptr<PartQueue> m_queue;
    std::shared_ptr<JobState> m_job;
    Trace& m_log;
    std::shared_ptr<const StreamMaker> m_taker;
};

/// The end of a queue at which a filter puts parts.
class QueueConsumer final : public ComObject<IXpsDocumentConsumer> {
public:
    /// sender: the filter that sends them.
    QueueConsumer(std::shared_ptr<PartQueue> queue, SharedContext context,
                  std::shared_ptr<const StreamMaker> sender)
        : m_queue(std::move(queue)), m_context(std::move(context)), m_sender(std::move(sender)) {}

    HRESULT STDMETHODCALLTYPE SendXpsUnknown(IUnknown* part) override;
    HRESULT STDMETHODCALLTYPE SendXpsDocument(IXpsDocument* document) override;
    HRESULT STDMETHODCALLTYPE SendFixedDocumentSequence(IFixedDocumentSequence* sequence) override;
    HRESULT STDMETHODCALLTYPE SendFixedDocument(IFixedDocument* document) override;
    HRESULT STDMETHODCALLTYPE SendFixedPage(IFixedPage* page) override;
    HRESULT STDMETHODCALLTYPE CloseSender() override;
    HRESULT STDMETHODCALLTYPE GetNewEmptyPart(PCWSTR uri, REFIID riid, void** part,
                                              IPrintWriteStream** stream) override;

    bool IsClosed() const { return m_isClosed.load(); }

private:
    ~QueueConsumer() override = default;

    HRESULT Send(IUnknown* part, bool* once = nullptr);

    std::shared_ptr<PartQueue> m_queue;
    SharedContext m_context;
    std::shared_ptr<const StreamMaker> m_sender;
    std::atomic<bool> m_isClosed{false};
    bool m_hasDocument = false;
    bool m_hasSequence = false;
};

} // namespace OvPipeline

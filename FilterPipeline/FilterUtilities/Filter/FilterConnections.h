#pragma once

#include "ComSupport/ThrowHresult.h"

#include <atlcomcli.h>
#include <filterpipeline.h>

/// Throws CPComException unless what the pipeline connected has the interface that the filter expects.
template <typename Interface>
void CheckConnection(Interface* connection) {
    CComPtr<Interface> expected;
    if (!connection) ThrowComException(E_POINTER);
    ThrowIfFailed(connection->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(&expected)));
}

/// Takes reader and writer of a filter from the pipeline, and only then checks both. The pipeline hands out
/// the interface that its configuration names, so a pipeline of the wrong shape fails here, ahead of any
/// page.
template <typename Reader, typename Writer>
void ConnectReaderAndWriter(IInterFilterCommunicator& communicator, CComPtr<Reader>& reader,
                            CComPtr<Writer>& writer) {
    reader.Release();
    ThrowIfFailed(communicator.RequestReader(reinterpret_cast<void**>(&reader)));
    writer.Release();
    ThrowIfFailed(communicator.RequestWriter(reinterpret_cast<void**>(&writer)));
    CheckConnection(reader.p);
    CheckConnection(writer.p);
}

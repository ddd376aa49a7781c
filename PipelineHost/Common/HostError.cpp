#include "Common/HostError.h"

#include <Package/PackageError.h>
#include <System/Thread.h>

#include <new>

namespace OvPipeline {

FailureNote& ThreadNote() {
    static thread_local FailureNote note;
    return note;
}

std::string& ThreadPart() {
    static thread_local std::string part;
    return part;
}

std::string& TakenPart() {
    static thread_local std::string part;
    return part;
}

HRESULT NoteException() noexcept {
    FailureNote& note = ThreadNote();
    try {
        try {
            throw;
        } catch (const HostError& error) {
            note = {error.Result(), error.Subject(), error.what(), error.FromInput()};
        } catch (const OvPlatform::PackageError& error) {
            note = {error.Result(), error.Subject(), error.what(), true};
        } catch (const OvPlatform::ThreadError& error) {
            note = {error.Result(), {}, error.what(), false};
        } catch (const std::bad_alloc&) {
            note = {E_OUTOFMEMORY, {}, {}, false};
        } catch (const std::exception& error) {
            note = {E_FAIL, {}, error.what(), false};
        } catch (...) {
            note = {E_UNEXPECTED, {}, {}, false};
        }
    } catch (...) {
        note.result = E_OUTOFMEMORY;
        note.fromInput = false;
    }
    return note.result;
}

} // namespace OvPipeline

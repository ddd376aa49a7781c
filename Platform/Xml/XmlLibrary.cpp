// Sets libxml2 up while this library is loaded, before anybody has a second thread. Its own set-up on first
// use loses a lock when two threads parse their first document at the same moment.
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

namespace OvPlatform {
namespace {

// Who parses is told what is wrong, and has words for it. The error stream is the program's.
void KeepSilent(void*, const char*, ...) {}

[[maybe_unused]] const bool isXmlLibraryReady = [] {
    xmlInitParser();
    xmlSetGenericErrorFunc(nullptr, &KeepSilent);
    xmlThrDefSetGenericErrorFunc(nullptr, &KeepSilent); // of threads to come
    return true;
}();

} // namespace
} // namespace OvPlatform

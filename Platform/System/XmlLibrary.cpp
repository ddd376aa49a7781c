// Sets libxml2 up while this library is loaded, before anybody has a second thread. Its own set-up on first
// use loses a lock when two threads parse their first document at the same moment.
#include <libxml/parser.h>

namespace OvPlatform {
namespace {

[[maybe_unused]] const bool isXmlLibraryReady = [] {
    xmlInitParser();
    return true;
}();

} // namespace
} // namespace OvPlatform

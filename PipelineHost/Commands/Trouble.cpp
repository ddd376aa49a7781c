#include "Commands/Trouble.h"

#include "Common/HostError.h"
#include "Report/HresultText.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <Package/PackageError.h>
#include <Spooler/QueueFolderError.h>

#include <windows.h>
#include <atlcomcli.h>

namespace OvPipeline {

namespace {

std::string About(const std::string& file, const std::string& line) {
    return line.starts_with(file + ":") ? line : file + ": " + line;
}

} // namespace

Trouble Trouble::Caught(const CommandOptions& options) {
    const auto with = [](const char* problem, HRESULT result) {
        return std::string(problem) + ": " + HresultText(result);
    };
    try {
        throw;
    } catch (const UsageError& error) {
        return {ExitUsage, std::string(error.what()) + " (see ov-pipeline --help)"};
    } catch (const HostError& error) {
        const std::string line = with(error.what(), error.Result());
        if (!error.FromInput()) return {ExitJobFailed, line};
        const bool isTicket = !options.ticket.empty() && error.Subject() == options.ticket;
        return {ExitInputRefused, isTicket ? About(options.ticket, line) : AboutJob(options, line)};
    } catch (const OvPlatform::PackageError& error) {
        return {ExitInputRefused, AboutJob(options, with(error.what(), error.Result()))};
    } catch (const OvPlatform::QueueFolderError& error) {
        return {ExitInputRefused, error.what()};
    } catch (const CPComException& error) {
        return {ExitJobFailed, AboutJob(options, with(error.what(), error.GetHresult()))};
    } catch (const CAtlException& error) {
        return {ExitJobFailed, AboutJob(options, HresultText(error))};
    } catch (const std::bad_alloc&) {
        return {ExitJobFailed, HresultText(E_OUTOFMEMORY)};
    } catch (const std::exception& error) {
        return {ExitJobFailed, error.what()};
    }
}

std::string AboutJob(const CommandOptions& options, const std::string& line) {
    return About(options.devmode.empty() ? options.job.name : options.devmode, line);
}

} // namespace OvPipeline

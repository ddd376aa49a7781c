#pragma once

#include <Spooler/QueueFolder.h>

#include <memory>
#include <string>

namespace OvPipeline {

/// The ticket that a queue makes of a stored device mode, one element a line, and behind it as a comment what
/// the attribute bytes in it say, with their names. Passwords are not shown there. The queue must be known to
/// the spooler. Throws InputError, with words, for a file that cannot be read, is no device mode, or gives a
/// ticket whose attribute bytes are damaged.
std::string DevmodeTicket(const std::string& file, const OvPlatform::QueueFolder& queue);

} // namespace OvPipeline

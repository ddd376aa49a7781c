#pragma once

#include <Spooler/QueueDescription.h>

/// A queue with something in every field.
inline OvPlatform::QueueDescription SampleQueue() {
    using namespace OvPlatform;
    using namespace std::chrono;
    QueueDescription queue;
    queue.printerName = L"Lobby \xD83D\xDDA8 & \"Co\""; // a character outside the BMP, and what XML escapes
    queue.portName = L"FILE:";
    queue.driverName = L"Lobby V4";
    queue.comment = L" spaces kept ";
    queue.location = L"Erdgescho\x00DF";
    queue.shareName = L"lobby";
    queue.separatorFile = L"sep.prn";
    queue.attributes = 0x840;
    queue.status = 0x80;
    queue.priority = 7;
    queue.startTime = 60;
    queue.untilTime = 1439;
    queue.averagePagesPerMinute = 33;
    queue.defaultTicket = "<ticket/>";
    queue.capabilities = "<capabilities/>";
    queue.driverProperties = {{L"Text", std::wstring(L"two\nlines \x00E9")},
                              {L"Empty", std::wstring()},
                              {L"Flag", true},
                              {L"Lowest", std::int32_t{-2147483647 - 1}},
                              {L"Block", QueueBytes{{0, 1, 0xFF, 0x80}}},
                              {L"NoBlock", QueueBytes{}},
                              {L"Flow", QueueStream{{'a', 'b', 'c'}}}};
    queue.queueProperties = {{L"text", std::wstring(L"t")}, {L"Text", false}};
    QueueJob job;
    job.id = 41;
    job.document = L"R\x00E9sum\x00E9";
    job.user = L"anna";
    job.machine = L"\\\\DESK-7";
    job.statusText = L"waiting";
    job.status = 8;
    job.totalPages = 12;
    job.pagesPrinted = 3;
    job.size = 4000000000;
    job.submitted = sys_days(year(2026) / 2 / 28) + hours(23) + minutes(59) + seconds(58) + milliseconds(7);
    queue.jobs.push_back(job);
    job.id = 7;
    job.notify = L"ben";
    job.statusText.clear();
    queue.jobs.push_back(job);
    return queue;
}

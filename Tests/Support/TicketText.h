#pragma once

#include <string>

/// A ticket document around the given elements, with the usual prefixes.
inline std::string TicketText(const std::string& elements) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<psf:PrintTicket xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
           R"( xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords")"
           R"( xmlns:pskv11="http://schemas.microsoft.com/windows/2013/05/printing/printschemakeywordsv11")"
           R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema")"
           R"( version="1">)" +
           elements + "</psf:PrintTicket>";
}

/// One choice, both names with their prefix.
inline std::string Choice(const std::string& feature, const std::string& option) {
    return "<psf:Feature name=\"" + feature + "\"><psf:Option name=\"" + option + "\"/></psf:Feature>";
}

#include "FontsAndImages/GDIPlus.h"

GDIPlus::GDIPlus() {
    const Gdiplus::GdiplusStartupInput input; // version 1
    m_startStatus = Gdiplus::GdiplusStartup(&m_token, &input, nullptr);
}

// Deliberate: a token is taken back once only, so each object has one of its own.
GDIPlus::GDIPlus(const GDIPlus&) : GDIPlus() {}

GDIPlus& GDIPlus::operator=(const GDIPlus&) { return *this; }

GDIPlus::~GDIPlus() {
    if (m_startStatus == Gdiplus::Ok) Gdiplus::GdiplusShutdown(m_token);
    m_token = 0;
    m_startStatus = Gdiplus::GdiplusNotInitialized;
}

Gdiplus::Status GDIPlus::GetGDIPlusStartStatus() { return m_startStatus; }

#pragma once

/// The version of a driver.
struct DriverVersion {
    unsigned short majorNumber = 0;
    unsigned short minorNumber = 0;
    unsigned short build = 0;
    unsigned short revision = 0;
};

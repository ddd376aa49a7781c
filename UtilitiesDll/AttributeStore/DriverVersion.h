#pragma once

/// The version of a driver.
struct DriverVersion {
    unsigned short major = 0;
    unsigned short minor = 0;
    unsigned short build = 0;
    unsigned short revision = 0;
};

#pragma once

#include <DeviceControl/PrintInstructionGenerator.h>

/// The families of devices, each called in one form.
struct InstructionFamily {
    /// The third text stays as it was where a family has two.
    using Generate = void (*)(PrintInstructionGenerator&, CXString&, CXString&, CXString&);

    const char* name;
    Generate generate;
};

template <void (PrintInstructionGenerator::*family)(CXString&, CXString&, CXString&)>
void GenerateBy(PrintInstructionGenerator& generator, CXString& pjl, CXString& setup, CXString& trailer) {
    (generator.*family)(pjl, setup, trailer);
}

inline constexpr InstructionFamily kestrelFamily = {
    "Kestrel", GenerateBy<&PrintInstructionGenerator::GenerateLegacyKestrelPostScript>};
inline constexpr InstructionFamily harrierFamily = {
    "Harrier", [](PrintInstructionGenerator& generator, CXString& pjl, CXString& setup, CXString& trailer) {
        generator.GenerateLegacyHarrierPostScript(pjl, setup, trailer, false);
    }};
inline constexpr InstructionFamily ospreyFamily = {
    "Osprey", GenerateBy<&PrintInstructionGenerator::GenerateLegacyOspreyPostScript>};
inline constexpr InstructionFamily merlinPostScriptFamily = {
    "MerlinPostScript",
    [](PrintInstructionGenerator& generator, CXString& pjl, CXString& setup, CXString& trailer) {
        generator.GenerateLegacyMerlinPostScript(pjl, setup, trailer, true);
    }};
inline constexpr InstructionFamily merlinPcl6Family = {
    "MerlinPcl6", GenerateBy<&PrintInstructionGenerator::GenerateLegacyMerlinPCL6>};
inline constexpr InstructionFamily lowEndPostScriptFamily = {
    "LowEndPostScript", GenerateBy<&PrintInstructionGenerator::GenerateSpecialLowEndPS>};
inline constexpr InstructionFamily lowEndPcl6Family = {
    "LowEndPcl6", GenerateBy<&PrintInstructionGenerator::GenerateSpecialLowEndPCL6>};
inline constexpr InstructionFamily lowEndPclmFamily = {
    "LowEndPclm", [](PrintInstructionGenerator& generator, CXString& pjl, CXString& ticket, CXString&) {
        generator.GenerateSpecialLowEndPCLm(pjl, ticket);
    }};

inline constexpr InstructionFamily instructionFamilies[] = {
    kestrelFamily,    harrierFamily,          ospreyFamily,     merlinPostScriptFamily,
    merlinPcl6Family, lowEndPostScriptFamily, lowEndPcl6Family, lowEndPclmFamily};

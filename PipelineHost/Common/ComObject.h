#pragma once

#include <windows.h>
#include <countedbase.h>
#include <filterpipeline.h>

namespace OvPlatform {

template <>
struct ExtendedInterface<IFixedPage> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartImage> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartFont> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartFont2> {
    using Type = IPartFont;
};
template <>
struct ExtendedInterface<IPartThumbnail> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartPrintTicket> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartColorProfile> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartResourceDictionary> {
    using Type = IPartBase;
};

} // namespace OvPlatform

namespace OvPipeline {

/// The base of the host's objects.
template <class... Interfaces>
using ComObject = OvPlatform::CountedBase<OvPlatform::PlainEntry, Interfaces...>;

} // namespace OvPipeline

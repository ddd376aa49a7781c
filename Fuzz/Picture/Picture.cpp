// The input as a picture's file. What is decoded can be written as PNG and read again: with the same size and
// the same pixels.

#include <windows.h>
#include <atlcomcli.h>
#include <wincodec.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

/// Nothing but what is checked throws the run away.
void Check(HRESULT result) {
    if (FAILED(result)) std::abort();
}

struct Read {
    CComPtr<IWICBitmapFrameDecode> frame;
    UINT width = 0;
    UINT height = 0;
    std::vector<BYTE> pixels;
};

bool Decode(IWICImagingFactory* factory, IStream* stream, Read& read) {
    CComPtr<IWICBitmapDecoder> decoder;
    if (FAILED(factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder)))
        return false;
    if (FAILED(decoder->GetFrame(0, &read.frame))) return false;
    WICPixelFormatGUID format{};
    Check(read.frame->GetSize(&read.width, &read.height));
    Check(read.frame->GetPixelFormat(&format));
    const UINT stride = read.width * (format == GUID_WICPixelFormat32bppRGBA ? 4 : 3);
    read.pixels.resize(std::size_t{stride} * read.height);
    Check(read.frame->CopyPixels(nullptr, stride, static_cast<UINT>(read.pixels.size()), read.pixels.data()));
    return true;
}

void Encode(IWICImagingFactory* factory, const Read& read, IStream* target) {
    CComPtr<IWICBitmapEncoder> encoder;
    CComPtr<IWICBitmapFrameEncode> frame;
    double x = 0;
    double y = 0;
    Check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder));
    Check(encoder->Initialize(target, WICBitmapEncoderNoCache));
    Check(encoder->CreateNewFrame(&frame, nullptr));
    Check(frame->Initialize(nullptr));
    Check(read.frame->GetResolution(&x, &y));
    Check(frame->SetResolution(x, y));
    Check(frame->WriteSource(read.frame, nullptr));
    Check(frame->Commit());
    Check(encoder->Commit());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CComPtr<IWICImagingFactory> factory;
    CComPtr<IWICStream> stream;
    CComPtr<IStream> target;
    Check(factory.CoCreateInstance(CLSID_WICImagingFactory2));
    Check(factory->CreateStream(&stream));
    std::vector<BYTE> bytes(data, data + size);
    bytes.push_back(0); // never null
    Check(stream->InitializeFromMemory(bytes.data(), static_cast<DWORD>(size)));
    Read read;
    if (!Decode(factory, stream, read)) return 0;
    constexpr std::size_t largest = 1 << 20; // what is larger takes the run's time
    if (read.pixels.size() > largest) return 0;
    Check(CreateStreamOnHGlobal(nullptr, TRUE, &target));
    Encode(factory, read, target);
    Read again;
    if (!Decode(factory, target, again) || again.width != read.width || again.height != read.height ||
        again.pixels != read.pixels)
        std::abort();
    return 0;
}

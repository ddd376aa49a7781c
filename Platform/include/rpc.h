#pragma once

// How interfaces are spelt.

#include <windef.h>

#define STDMETHODCALLTYPE
#define STDMETHODVCALLTYPE
#define STDAPICALLTYPE
#define STDMETHODIMP HRESULT STDMETHODCALLTYPE
#define STDMETHODIMP_(type) type STDMETHODCALLTYPE
#define STDMETHOD(method) virtual HRESULT STDMETHODCALLTYPE method
#define STDMETHOD_(type, method) virtual type STDMETHODCALLTYPE method
#define STDAPI EXTERN_C __attribute__((visibility("default"))) HRESULT STDAPICALLTYPE
#define STDAPI_(type) EXTERN_C __attribute__((visibility("default"))) type STDAPICALLTYPE
#define WINOLEAPI EXTERN_C DECLSPEC_IMPORT HRESULT STDAPICALLTYPE
#define WINOLEAPI_(type) EXTERN_C DECLSPEC_IMPORT type STDAPICALLTYPE
#define WINOLEAUTAPI EXTERN_C DECLSPEC_IMPORT HRESULT STDAPICALLTYPE
#define WINOLEAUTAPI_(type) EXTERN_C DECLSPEC_IMPORT type STDAPICALLTYPE
#define PURE = 0
#define THIS_
#define THIS void
#define interface struct

/// An interface: a struct of pure virtual functions. Visible across modules, so that its run-time type is
/// one.
#define MIDL_INTERFACE(uuid) struct __attribute__((visibility("default")))
#define DECLARE_INTERFACE(name) struct __attribute__((visibility("default"))) name
#define DECLARE_INTERFACE_(name, base) struct __attribute__((visibility("default"))) name : public base
#define BEGIN_INTERFACE
#define END_INTERFACE

// How the module registers its run-time classes with the host, and takes them away again.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/runtime.h"

// What every body class of the module is registered with.
constexpr int kTorviClassVersion = 33;
constexpr int kTorviClassMaintenanceVersion = 427;
constexpr int kTorviProxyFlags = 1153;
constexpr const wchar_t* kTorviAppName = L"ZnDbTorvi";

// Creates the class unless it is stored already. Another class of that name in the place of the stored one
// means two builds of the module in one process: the program stops with "Class mismatch".
TORVI_EXPORT void torviRegisterBodyClass(ZnRxClass*& stored, const wchar_t* name, const wchar_t* parent,
                                         ZnRxConstructor constructor);
TORVI_EXPORT void torviRegisterPlainClass(ZnRxClass*& stored, const wchar_t* name, const wchar_t* parent,
                                          ZnRxConstructor constructor = nullptr);

// In a class's source. Nothing is registered before the module's start-up calls rxInit.
#define TORVI_DEFINE_BODY_CLASS(CLASS, PARENT)                                                               \
  ZnRxClass* CLASS::gpDesc = nullptr;                                                                        \
  void CLASS::rxInit() {                                                                                     \
    torviRegisterBodyClass(gpDesc, className(), PARENT::className(),                                         \
                           []() -> ZnRxObject* { return new CLASS; });                                       \
  }

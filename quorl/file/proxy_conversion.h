// From stored fields to proxies, from proxies to objects, and what both write.
#pragma once

#include <memory>
#include <string_view>

#include "quorl/file/proxy_data.h"

class ZnDbRecordFiler;
class ZnDbTextInFiler;
class ZnDbTextOutFiler;

// The marker in the text format under which the bytes of a class stand that wrote none of its text.
inline constexpr const wchar_t* kProxyDataMarker = L"ZnDbProxyData";

// New proxies in no database; null with the status of the filer, or eFileDamaged, for what can't be a
// proxy's. text is what the class wrote in the text format, if anything; the record then holds the host's
// level, and the references of both.
std::unique_ptr<ZnDbObject> zndbProxyFromRecord(const ZnDbProxyClass& cls, ZnDbRecordFiler& filer,
                                                const std::string_view* text);
// bytesMarked: the object's items have the marker above.
std::unique_ptr<ZnDbObject> zndbProxyFromText(const ZnDbProxyClass& cls, ZnDbTextInFiler& filer,
                                              bool bytesMarked);

// A new object of the class with the fields that the proxy keeps; null with a status when its reader fails.
std::unique_ptr<ZnDbObject> zndbObjectFromProxy(const ZnDbProxy& proxy, const ZnRxClass& cls,
                                                ZnDbDatabase* database, Quorl::ErrorStatus& status);

// What a file holds of an object, a proxy as the class that it stands for wrote it. text becomes the part
// that only exists in the text format; empty for everything but proxies from there.
Quorl::ErrorStatus zndbWriteRecord(const ZnDbObject& object, ZnDbObjectRecord& record, ZnDbRecordFiler& filer,
                                   std::string_view& text);
Quorl::ErrorStatus zndbWriteText(const ZnDbObject& object, ZnDbTextOutFiler& filer);

#pragma once

#include <QtCore/QtGlobal>

#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__)
#define TAVOLINS_HEAP_IS_REPLACED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TAVOLINS_HEAP_IS_REPLACED
#endif
#endif
#if defined(TAVOLINS_HEAP_IS_REPLACED)
#include <sanitizer/allocator_interface.h>
#endif

/// Bytes in use on the heap, also on the one that a sanitizer puts in its place.
inline qint64 heapInUse()
{
#if defined(TAVOLINS_HEAP_IS_REPLACED)
    return qint64(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
#endif
}

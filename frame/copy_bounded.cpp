#include "frame/copy_bounded.h"

void CopyBounded(char* dest, const char* src, int32_t size)
{
    if (size <= 0)
        return;
    int32_t i = 0;
    for (; i < size - 1 && src[i] != '\0'; ++i)
        dest[i] = src[i];
    dest[i] = '\0';
}

// Sorts keys read from the input through qsortplusplus and through the arrays'
// mSort, with comparisons that are arbitrary but consistent (the keys compared
// as integers, in a direction and on a bit mask picked by the first byte). The
// callbacks check every index they are given; the result must be sorted and a
// permutation of the input.
#include <gvlib/gvlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::vector<int32_t> g_keys;
int32_t g_mask = -1;
int32_t g_sign = 1;

void Fail(char const* what) {
    fprintf(stderr, "property failed: %s\n", what);
    abort();
}

void CheckIndex(uint32_t i) {
    if (i >= g_keys.size())
        Fail("a callback index lies inside the range sorted");
}

int32_t KeyOrder(int32_t a, int32_t b) {
    a &= g_mask;
    b &= g_mask;
    return a < b ? -g_sign : (a > b ? g_sign : 0);
}

int32_t CompareKeys(uint32_t i, uint32_t j) {
    CheckIndex(i);
    CheckIndex(j);
    return KeyOrder(g_keys[i], g_keys[j]);
}

void SwapKeys(uint32_t i, uint32_t j) {
    CheckIndex(i);
    CheckIndex(j);
    std::swap(g_keys[i], g_keys[j]);
}

void CheckSorted(std::vector<int32_t> const& before, std::vector<int32_t> const& after) {
    for (size_t i = 1; i < after.size(); ++i)
        if (KeyOrder(after[i - 1], after[i]) > 0)
            Fail("the result is sorted");
    std::vector<int32_t> a(before), b(after);
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    if (a != b)
        Fail("the result is a permutation of the input");
}

void SortIndexes(std::vector<int32_t> const& keys) {
    g_keys = keys;
    qsortplusplus(static_cast<uint32_t>(g_keys.size()), SwapKeys, CompareKeys);
    CheckSorted(keys, g_keys);
}

// A long array sorted with callbacks that read the sort array.
int32_t CompareLongs(uint32_t i, uint32_t j) {
    CGVArray* array = GVGetSortArray();
    if (array == nullptr || i >= static_cast<uint32_t>(array->mGetNumItems()) ||
        j >= static_cast<uint32_t>(array->mGetNumItems()))
        Fail("mSort compares items of the array it sorts");
    int32_t a = 0, b = 0;
    array->mGetArrayItem(&a, static_cast<int32_t>(i));
    array->mGetArrayItem(&b, static_cast<int32_t>(j));
    return KeyOrder(a, b);
}

void SortLongArray(std::vector<int32_t> const& keys) {
    CGVLongArray array;
    for (int32_t k : keys)
        array.mAdd(&k);
    array.mSort(SORT_ASCENDING, CGVArray::mSwap2, CompareLongs);
    std::vector<int32_t> after;
    for (int32_t i = 0; i < array.mGetNumItems(); ++i)
        after.push_back(array[i]);
    CheckSorted(keys, after);
}

// An array of pointers to value objects, sorted by their own mCompare.
void SortObjectArray(std::vector<int32_t> const& keys, SORTORDER order) {
    std::vector<CGVLong> values(keys.begin(), keys.end());
    CGVArray array(static_cast<int32_t>(sizeof(CGVObject*)));
    for (CGVLong& v : values) {
        CGVObject* p = &v;
        array.mAdd(&p);
    }
    array.mSort(order);
    std::vector<int32_t> after;
    for (int32_t i = 0; i < array.mGetNumItems(); ++i) {
        CGVObject* p = nullptr;
        array.mGetArrayItem(&p, i);
        after.push_back(static_cast<CGVLong*>(p)->mGetValue());
    }
    int32_t savedMask = g_mask, savedSign = g_sign;
    g_mask = -1;
    g_sign = order == SORT_ASCENDING ? 1 : -1;
    CheckSorted(keys, after);
    g_mask = savedMask;
    g_sign = savedSign;
}

// Strings sorted by collation: each neighbour pair must be in order.
void SortStrings(std::vector<int32_t> const& keys, SORTORDER order) {
    CGVStringArray array;
    for (int32_t k : keys) {
        char text[5];
        std::memcpy(text, &k, 4);
        text[4] = '\0';
        CGVString s(text);
        array.mAdd(&s);
    }
    array.mSort(order);
    if (array.mGetNumItems() != static_cast<int32_t>(keys.size()))
        Fail("sorting keeps every string");
    int32_t direction = order == SORT_ASCENDING ? 1 : -1;
    for (int32_t i = 1; i < array.mGetNumItems(); ++i) {
        int32_t c = array[i - 1].mCompare(&array[i]);
        if (c != -2 && c * direction > 0)
            Fail("the strings are in collation order");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size == 0)
        return 0;
    uint8_t mode = data[0];
    // Keys of 1, 2 or 4 bytes: narrow keys give many equal ones.
    size_t width = size_t{1} << (mode & 3) % 3;
    g_sign = (mode & 4) ? -1 : 1;
    g_mask = (mode & 8) ? 0x0F0F0F0F : -1;
    std::vector<int32_t> keys;
    for (size_t at = 1; at + width <= size && keys.size() < 2048; at += width) {
        int32_t k = 0;
        std::memcpy(&k, data + at, width);
        keys.push_back(width == 1 ? static_cast<int8_t>(k) : (width == 2 ? static_cast<int16_t>(k) : k));
    }
    SortIndexes(keys);
    SortLongArray(keys);
    SortObjectArray(keys, (mode & 16) ? SORT_DESCENDING : SORT_ASCENDING);
    if (keys.size() <= 256)
        SortStrings(keys, (mode & 32) ? SORT_DESCENDING : SORT_ASCENDING);
    return 0;
}

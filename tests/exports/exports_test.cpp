// Every listed export: declared in a public header, with the listed bytes of arguments, found in the library under its
// listed name, aliases at the address of their target.
#include <morvane/bignum.h>
#include <morvane/csp.h>
#include <morvane/prime.h>
#include <morvane/primitives.h>
#include <morvane/toolkit.h>

#include <gtest/gtest.h>
#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

// The stack bytes that a 32-bit caller passes.
template <typename... Parameters>
constexpr std::size_t words_of() {
    return (std::size_t{0} + ... + ((sizeof(Parameters) + 3) / 4 * 4));
}
template <typename Result, typename... Parameters>
constexpr std::size_t argument_bytes(Result (*)(Parameters...)) {
    return words_of<Parameters...>();
}
#if defined(_WIN32)
template <typename Result, typename... Parameters>
constexpr std::size_t argument_bytes(Result(__attribute__((stdcall)) *)(Parameters...)) {
    return words_of<Parameters...>();
}
#endif

struct Export {
    const char* name;
    const char* windows_name;
    const char* target;
    const void* declared;
    std::size_t declared_bytes;
    std::size_t listed_bytes;
};

#define EXPORT(name, windows_name, convention, bytes, target) \
    {#name, windows_name, #target, reinterpret_cast<const void*>(&name), argument_bytes(&name), bytes},
const Export kExports[] = {
#include "export_table.inc"
};
#undef EXPORT

const char* exported_name(const Export& row) {
#if defined(_WIN32)
    return row.windows_name;
#else
    return row.name;
#endif
}

const void* find(const char* name) {
#if defined(_WIN32)
    return reinterpret_cast<const void*>(GetProcAddress(GetModuleHandleA(MORVANE_TEST_LIBRARY), name));
#else
    return dlsym(RTLD_DEFAULT, name);
#endif
}

TEST(Exports, AreFoundUnderTheirNamesAndDeclaredAsListed) {
    for (const Export& row : kExports) {
        const void* const found = find(exported_name(row));
        EXPECT_NE(found, nullptr) << row.name;
        for (const Export& target : kExports) {
            if (std::string(target.name) == row.target) {
                EXPECT_EQ(found, find(exported_name(target))) << row.name;
            }
        }
        if (sizeof(void*) == 4) {
            EXPECT_EQ(row.declared_bytes, row.listed_bytes) << row.name;
        }
        EXPECT_NE(row.declared, nullptr);
    }
}

#if defined(_WIN32)
TEST(VersionResource, NamesTheLibraryAndItsVersion) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(MORVANE_TEST_LIBRARY, &ignored);
    ASSERT_NE(size, 0U);
    std::string block(size, '\0');
    ASSERT_TRUE(GetFileVersionInfoA(MORVANE_TEST_LIBRARY, 0, size, block.data()));
    const auto text = [&](const char* field) {
        void* value = nullptr;
        UINT length = 0;
        const std::string path = std::string("\\StringFileInfo\\040904B0\\") + field;
        return VerQueryValueA(block.data(), path.c_str(), &value, &length) ? static_cast<const char*>(value) : "missing";
    };
    EXPECT_STREQ(text("FileVersion"), MORVANE_TEST_VERSION);
    EXPECT_STREQ(text("OriginalFilename"), MORVANE_TEST_LIBRARY);
}
#endif

}  // namespace

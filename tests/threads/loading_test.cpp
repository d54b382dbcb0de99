// The library as a host loads it that is not linked with it: it has no thread-local variables, for which the
// C library would have to find memory in each thread on first use, and end the process if there is none.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>
#include <string_view>

namespace {

struct Found {
    int libraries = 0;
    int threadLocalSegments = 0;
};

int countSegments(dl_phdr_info* object, std::size_t, void* argument) {
    if (std::string_view(object->dlpi_name).find("libkelcl.so") == std::string_view::npos) return 0;
    Found& found = *static_cast<Found*>(argument);
    ++found.libraries;
    for (int i = 0; i < object->dlpi_phnum; ++i)
        if (object->dlpi_phdr[i].p_type == PT_TLS) ++found.threadLocalSegments;
    return 0;
}

TEST(LoadedLibrary, HasNoThreadLocalVariables) {
    ASSERT_NE(dlopen(KELCL_TEST_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL), nullptr) << dlerror();
    Found found;
    dl_iterate_phdr(countSegments, &found);
    EXPECT_EQ(found.libraries, 1);
    EXPECT_EQ(found.threadLocalSegments, 0);
}

} // namespace

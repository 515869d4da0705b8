#include "online/http_address.h"

#include <gtest/gtest.h>

namespace lore {
namespace {

/// "host field|target", or nothing.
std::string Shown(const std::optional<HttpAddress>& address) {
    return address ? address->HostField() + "|" + address->target : "";
}

TEST(HttpAddress, NamesThePortUnlessItIs80) {
    const std::pair<const char*, const char*> cases[] = {{"http://example.test:8080/a", "example.test:8080|/a"},
                                                         {"http://example.test:80/a", "example.test|/a"},
                                                         {"http://example.test:/a", "example.test|/a"},
                                                         {"http://example.test:0080/a", "example.test|/a"},
                                                         {"HTTP://example.test", "example.test|/"},
                                                         {"http://example.test?x=1#y", "example.test|/?x=1"},
                                                         {"http://[::1]:81/a", "[::1]:81|/a"},
                                                         {"http://[::1]/a", "[::1]|/a"},
                                                         {"http://[::1/a", ""},
                                                         {"http://[::1]x/a", ""},
                                                         {"http:/example.test/", ""},
                                                         {"http://:80/", ""},
                                                         {"http://example.test:99999/", ""},
                                                         {"http://example.test:-1/", ""},
                                                         {"http://ex\xC3\xA4mple.test/", ""}};
    for (const auto& [url, shown] : cases)
        EXPECT_EQ(Shown(ParseHttpAddress(url)), shown) << url;
}

TEST(HttpAddress, FollowsALocationFromWhereItWasGiven) {
    const HttpAddress from = *ParseHttpAddress("http://[::1]:81/a/b?c=/d");
    const std::pair<const char*, const char*> cases[] = {{"http://other.test/x", "other.test|/x"},
                                                         {"//other.test:80/x", "other.test|/x"},
                                                         {"/x?y", "[::1]:81|/x?y"},
                                                         {"x", "[::1]:81|/a/x"},
                                                         {"?x", "[::1]:81|/a/b?x"},
                                                         {" /x ", "[::1]:81|/x"},
                                                         {"x?u=http://y", "[::1]:81|/a/x?u=http://y"},
                                                         {"", ""},
                                                         {"mailto:x", ""},
                                                         {"https://other.test/", ""}};
    for (const auto& [location, shown] : cases)
        EXPECT_EQ(Shown(FollowLocation(from, location)), shown) << location;
}

}  // namespace
}  // namespace lore

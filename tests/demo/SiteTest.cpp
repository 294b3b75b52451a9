#include "Site.h"

#include "Scene.h"
#include "Synthesis.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace world {
namespace {

// Where the links of a page lead.
std::vector<std::string> Links(std::string_view page) {
    constexpr std::string_view mark = "href=\"";
    std::vector<std::string> links;
    for (std::size_t at = 0; (at = page.find(mark, at)) != std::string_view::npos;) {
        at += mark.size();
        links.emplace_back(page.substr(at, page.find('"', at) - at));
    }
    return links;
}

// The text of a page: what is left without its tags and its style.
std::string TextOf(std::string_view page) {
    std::string text;
    bool isTag = false;
    for (const char c : page.substr(page.find("</style>"))) {
        if (c == '<')
            isTag = true;
        if (!isTag)
            text += c;
        if (c == '>')
            isTag = false;
    }
    return text;
}

TEST(Site, HasAHomePageTheVersionAndTheSounds) {
    const std::map<std::string, std::string> expected = {
        {"/", "text/html; charset=utf-8"},
        {"/client/clientver.txt", "text/plain; charset=utf-8"},
        {"/sounds/bell.wav", "audio/wav"},
        {"/sounds/rain.wav", "audio/wav"},
        {"/sounds/thunder.wav", "audio/wav"},
        {"/sounds/tune.mid", "audio/midi"},
    };
    std::map<std::string, std::string> types;
    for (const auto& [path, page] : Site(1234, "1"))
        types[path] = page.type;
    EXPECT_EQ(types, expected);
}

TEST(Site, ServesEachSoundUnderItsOwnName) {
    const Pages pages = Site(1234, "1");
    EXPECT_TRUE(pages.at("/sounds/rain.wav").body == RainWave());
    EXPECT_TRUE(pages.at("/sounds/thunder.wav").body == ThunderWave());
    EXPECT_TRUE(pages.at("/sounds/bell.wav").body == BellWave());
    EXPECT_TRUE(pages.at("/sounds/tune.mid").body == TuneMidi());
}

TEST(Site, TellsHowToComeIn) {
    const std::string text = TextOf(Site(4321, "1").at("/").body);
    EXPECT_TRUE(Contains(text, "Quillmere"));
    EXPECT_TRUE(Contains(text, "127.0.0.1"));
    EXPECT_TRUE(Contains(text, "4321"));
    EXPECT_FALSE(Contains(text, "1234"));
}

TEST(Site, BeginsThePageTheWayAReaderAndItsReadingAidExpect) {
    const std::string page = Site(1234, "1").at("/").body;
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n<html lang=\"en\">"));
    for (const char* part :
         {"<meta charset=\"utf-8\">", "<meta name=\"viewport\"", "<title>", "<main>", "<h1>"})
        EXPECT_TRUE(Contains(page, part)) << part;
}

TEST(Site, LinksOnlyToPagesThatAreThere) {
    const Pages pages = Site(1234, "1");
    const std::vector<std::string> links = Links(pages.at("/").body);
    EXPECT_EQ(links, std::vector<std::string>{std::string(VersionPath)});
    for (const std::string& link : links)
        EXPECT_TRUE(pages.contains(link)) << link;
}

TEST(Site, PublishesTheVersionToTheByte) {
    for (const std::string version : {"1", "2.10 beta", "", "<b>&\"\r\n", "\xc3\xa9"})
        EXPECT_EQ(Site(1234, version).at(VersionPath.data()).body, version);
}

} // namespace
} // namespace world

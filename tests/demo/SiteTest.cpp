#include "Site.h"

#include "Scene.h"
#include "Synthesis.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace world {
namespace {

// Where the links of a page lead, its style among them.
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

TEST(Site, HasAHomePageTheVersionAndTheSoundsBesideTheManual) {
    const std::map<std::string, std::string> expected = {
        {"/", "text/html; charset=utf-8"},
        {"/client/clientver.txt", "text/plain; charset=utf-8"},
        {"/sounds/bell.wav", "audio/wav"},
        {"/sounds/rain.wav", "audio/wav"},
        {"/sounds/thunder.wav", "audio/wav"},
        {"/sounds/tune.mid", "audio/midi"},
    };
    std::map<std::string, std::string> types;
    for (const auto& [path, page] : Site(1234, "1")) {
        if (!path.starts_with(ManualPath))
            types[path] = page.type;
    }
    EXPECT_EQ(types, expected);
}

// The pages of the manual, with the paths they are served at.
Pages Manual() {
    Pages manual = Site(1234, "1");
    std::erase_if(manual, [](const auto& page) { return !page.first.starts_with(ManualPath); });
    return manual;
}

const char* TypeFor(std::string_view path) {
    if (path.ends_with(".html"))
        return "text/html; charset=utf-8";
    return path.ends_with(".css") ? "text/css; charset=utf-8" : "image/png";
}

TEST(Site, ServesTheManualWithItsStyle) {
    const Pages manual = Manual();
    EXPECT_GE(manual.size(), 10U);
    EXPECT_TRUE(manual.contains("/manual/index.html"));
    EXPECT_TRUE(manual.contains("/manual/manual.css"));
    for (const auto& [path, page] : manual) {
        EXPECT_EQ(page.type, TypeFor(path)) << path;
        EXPECT_FALSE(page.body.empty()) << path;
        EXPECT_EQ(page.type == "image/png", page.body.starts_with("\x89PNG")) << path;
    }
}

// A link of a page of the manual without its anchor, as a path.
std::string PathOf(const std::string& link) {
    const std::string target = link.substr(0, link.find('#'));
    return target.starts_with('/') ? target : std::string(ManualPath) + target;
}

TEST(Site, LeadsFromEveryPageOfTheManualOnlyToPagesThatAreThere) {
    const Pages manual = Manual();
    for (const auto& [path, page] : manual) {
        if (!path.ends_with(".html"))
            continue;
        const std::vector<std::string> links = Links(page.body);
        EXPECT_FALSE(links.empty()) << path;
        for (const std::string& link : links)
            EXPECT_TRUE(link.starts_with('#') || manual.contains(PathOf(link)))
                << path << " leads to " << link;
    }
}

TEST(Site, LeadsToEveryPageOfTheManualFromItsFirst) {
    const Pages manual = Manual();
    std::set<std::string> reached = {"/manual/index.html"};
    for (const std::string& link : Links(manual.at("/manual/index.html").body))
        reached.insert(PathOf(link));
    for (const auto& [path, page] : manual)
        EXPECT_EQ(reached.contains(path), path.ends_with(".html") || path.ends_with(".css"))
            << path;
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
    EXPECT_EQ(links, (std::vector<std::string>{"/manual/index.html", std::string(VersionPath)}));
    for (const std::string& link : links)
        EXPECT_TRUE(pages.contains(link)) << link;
}

TEST(Site, PublishesTheVersionToTheByte) {
    for (const std::string version : {"1", "2.10 beta", "", "<b>&\"\r\n", "\xc3\xa9"})
        EXPECT_EQ(Site(1234, version).at(VersionPath.data()).body, version);
}

} // namespace
} // namespace world

#include "examples/gallery/options.h"

#include <cstdio>
#include <string_view>

namespace gallery {

const char* const kUsage =
    "usage: gallery [--page NAME]               open the gallery\n"
    "       gallery --shot FILE [--page NAME]   write a picture of one page\n"
    "       gallery --shot-all FOLDER           write a picture of each page\n"
    "       gallery --list                      print the names of the pages\n"
    "       gallery --specimens FOLDER          write a picture of each state of each item\n"
    "\n"
    "--dense with any of the pictures: as on a screen with twice the pixels each way.\n"
    "\n"
    "Pictures are PNG files and need no display. Where there is no display, the first form writes all of\n"
    "them into the folder gallery-shots and prints their paths.\n";

std::optional<Options> ParseOptions(int count, const char* const* arguments) {
    Options options;
    const auto complain = [](const char* what, std::string_view argument) {
        std::fprintf(stderr, "gallery: %s: %.*s (--help says more)\n", what,
                     static_cast<int>(argument.size()), argument.data());
        return std::nullopt;
    };
    bool chosen = false;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--page") {
            if (i + 1 == count || !options.page.empty())
                return complain("one page is wanted after", argument);
            options.page = arguments[++i];
            if (options.page.empty()) return complain("one page is wanted after", argument);
            continue;
        }
        if (argument == "--dense") {
            options.dense = true;
            continue;
        }
        if (chosen) return complain("one task at a time", argument);
        chosen = true;
        if (argument == "--list") {
            options.task = Options::Task::List;
        } else if (argument == "--help") {
            options.task = Options::Task::Help;
        } else if (argument == "--shot" || argument == "--shot-all" || argument == "--specimens") {
            if (i + 1 == count || arguments[i + 1][0] == '\0')
                return complain("a name is wanted after", argument);
            options.task = argument == "--shot"       ? Options::Task::Shot
                           : argument == "--shot-all" ? Options::Task::ShotAll
                                                      : Options::Task::Specimens;
            options.target = arguments[++i];
        } else {
            return complain("unknown argument", argument);
        }
    }
    const bool onePage = options.task == Options::Task::Open || options.task == Options::Task::Shot;
    if (!options.page.empty() && !onePage) return complain("goes with no page", "--page");
    return options;
}

}  // namespace gallery

#include "bench/hearing/Page.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <stdexcept>

std::string fillIn(std::string const& pageTemplate, Figures const& figures) {
    std::string page;
    std::size_t done = 0;
    for (;;) {
        std::size_t const open = pageTemplate.find("{{", done);
        if (open == std::string::npos) {
            return page + pageTemplate.substr(done);
        }
        std::size_t const close = pageTemplate.find("}}", open);
        std::string const name =
            close == std::string::npos ? "" : pageTemplate.substr(open + 2, close - open - 2);
        auto const figure = figures.find(name);
        if (figure == figures.end()) {
            throw std::runtime_error("the page asks for an unknown figure {{" + name + "}}");
        }
        page += pageTemplate.substr(done, open - done) + figure->second;
        done = close + 2;
    }
}

std::string markdownTable(std::vector<std::string> const& heads,
                          std::vector<std::vector<std::string>> const& rows) {
    auto const line = [](std::vector<std::string> const& cells) {
        std::string text = "|";
        for (std::string const& cell : cells) {
            text += " " + cell + " |";
        }
        return text + "\n";
    };
    std::string text = line(heads) + "|---|";
    for (std::size_t i = 1; i < heads.size(); ++i) {
        text += "---:|";
    }
    text += "\n";
    for (std::vector<std::string> const& row : rows) {
        text += line(row);
    }
    text.pop_back();
    return text;
}

std::string percent(double share) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", 100.0 * share);
    return text;
}

std::string milliseconds(double seconds) {
    return std::to_string(std::lround(1000.0 * seconds));
}

std::string rightWrong(Mean const& mean) {
    return mean.takes == 0 ? "-" : percent(mean.hearing.right) + " / " + percent(mean.hearing.wrong);
}

std::string peerRightWrong(Mean const& mean) {
    return mean.takes == 0 ? "-" : percent(mean.hearing.peerRight) + " / " + percent(mean.hearing.peerWrong);
}

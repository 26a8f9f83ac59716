#pragma once

#include <map>
#include <string>
#include <vector>

#include "bench/hearing/Results.h"

/// The figures and tables of a page, by the names that its template calls them by.
///
///     Figures figures;
///     figures["right"] = percent(0.962);
///     std::string const page = fillIn("It hears {{right}} % of them.\n", figures);
using Figures = std::map<std::string, std::string>;

/// The template with every {{name}} replaced by its figure. Throws std::runtime_error for a name that has
/// none.
std::string fillIn(std::string const& pageTemplate, Figures const& figures);

/// A Markdown table; the first column is text, the others are set to the right.
std::string markdownTable(std::vector<std::string> const& heads,
                          std::vector<std::vector<std::string>> const& rows);

/// A share of 0 to 1 as a percentage with one decimal.
std::string percent(double share);

/// Seconds as whole milliseconds.
std::string milliseconds(double seconds);

/// "right / wrong", in percent; "-" for a mean over nothing.
std::string rightWrong(Mean const& mean);
std::string peerRightWrong(Mean const& mean);

/// What the page says about single notes, chords and silence: figures and tables named "notes...".
void addNoteFigures(Archive const& archive, std::string const& shippedTable, Figures& figures);

/// About the tables that were tried, and how near to the best possible one the shipped one is: "tables...".
void addTableFigures(Archive const& archive, std::string const& shippedTable,
                     std::vector<ShippedSong> const& songs, Figures& figures);

/// About the songs: "songs...".
void addSongFigures(Archive const& archive, std::string const& shippedTable,
                    std::vector<ShippedSong> const& songs, Figures& figures);

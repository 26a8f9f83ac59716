#pragma once

#include <string>
#include <vector>

/// What a subcommand of zanto-song gives its arguments to, and what main gives the process as its status.
using CommandArguments = std::vector<std::string>;

constexpr int statusDone = 0;
constexpr int statusFailed = 1;    ///< a file that cannot be read or written, or faults in it
constexpr int statusWrongUse = 2;  ///< arguments that make no sense, one line on standard error

/// `zanto-song check`: all that is wrong with songs and listings, see checkUsage.
int checkCommand(CommandArguments const& arguments);
extern char const* const checkUsage;

/// `zanto-song import`: a song from MIDI, ABC or MusicXML, see importUsage.
int importCommand(CommandArguments const& arguments);
extern char const* const importUsage;

/// `zanto-song perform`: what score a recording would have got, see performUsage.
int performCommand(CommandArguments const& arguments);
extern char const* const performUsage;

/// `zanto-song render`: the song as a sound file, see renderUsage.
int renderCommand(CommandArguments const& arguments);
extern char const* const renderUsage;

/// `zanto-song show`: the staff as a picture, see showUsage.
int showCommand(CommandArguments const& arguments);
extern char const* const showUsage;

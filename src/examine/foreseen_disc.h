// What a disc will be if everything goes well: the disc asked for, with what the facts of its
// streams foresee.
#pragma once

#include "disc/disc_description.h"
#include "examine/disc_traits.h"
#include "examine/titleset_rules.h"

#include <string>
#include <vector>

namespace corvane {

/// Says nothing of what is not known: of a file that has not been read, or not to its end, of typed
/// commands that name a place which is not described, of the ways through a disc with a jump pad.
/// `d`: the disc that the run makes (authoring/asked_disc.h); `hand_edited`: by XML that somebody
/// edited, where a title that says nothing of what follows it has nothing there.
disc_traits foreseen_disc(const disc_description& d, const facts_by_path& facts, bool hand_edited);

/// Says of text subtitles how many cues they will have and when, where it is sure what spumux makes
/// of them (examine/cue_times.h). Reads their files.
void foresee_cues(const disc_description& d, disc_traits& foreseen);

/// The chapter times of each title, for foreseen_run.
std::vector<std::string> chapters_asked(const disc_description& d);

}  // namespace corvane

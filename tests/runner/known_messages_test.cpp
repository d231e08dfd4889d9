// Each known message, as the tool prints it.
#include "runner/tools/known_messages.h"

#include "noting_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing_support::noting_host;

const finding_item title_2{finding_item::whole_kind::title, 2};

/// What a tool prints, and how the log's line about it goes on after the item.
struct sample {
  const char* tool;
  const char* printed;
  const char* rule;
  const char* log;
};

/// Printed by the real tools when they were provoked.
const std::vector<sample> measured = {
    {"mplex", "**ERROR: [mplex.exe] MUX STATUS: Frame data under-runs detected!", "mplex-underrun",
     "ERR:  title 2: its streams need more data at once than a DVD can be read. Players would "
     "stop or stutter there. Encode the video with a lower peak bit rate"},
    {"mplex",
     "++ WARN: [mplex] Stream bd: data will arrive too late sent(SCR)=104009 required(DTS)=12012",
     "mplex-late-data", "WARN: title 2: data of stream bd comes too late. Players would"},
    {"mplex", "**ERROR: [mplex] File x.wav unrecogniseable!", "mplex-unknown-file",
     "ERR:  title 2: x.wav is no stream that mplex knows."},
    {"mplex", "**ERROR: [mplex] Unable to open file nix.m2v for reading.", "mplex-cannot-open",
     "ERR:  title 2: nix.m2v cannot be opened."},
    {"mplex", "**ERROR: [mplex] Unable to read from empty.m2v.", "mplex-cannot-read",
     "ERR:  title 2: there is nothing to read in empty.m2v."},
    {"mplex", "**ERROR: [mplex] Could not open for writing: /nodir/o.mpg", "mplex-cannot-write",
     "ERR:  title 2: /nodir/o.mpg cannot be written."},
    {"mplex", "**ERROR: [mplex] Failed write: /dev/full", "mplex-disk-full",
     "ERR:  title 2: /dev/full could not be written whole."},
    {"mplex",
     "**ERROR: [mplex] Need to split output but there appears to be no %d in the filename pattern "
     "o.mpg",
     "mplex-sequence-end",
     "ERR:  title 2, video: its video has a sequence end code before its end."},
    {"mplex",
     "**ERROR: [mplex] Can't find next AC3 frame: @ 30720 we have dc0b - broken bit-stream?",
     "mplex-damaged-audio", "ERR:  title 2, audio: its AC3 sound is damaged at byte 30720."},
    {"mplex", "++ WARN: [mplex] Discarding incomplete final frame AC3 stream 0!",
     "mplex-last-frame", "INFO: title 2, audio: the last frame of its sound is not whole"},
    {"dvdauthor", "WARN: attempt to update tv format from ntsc to pal; skipping",
     "dvdauthor-mixed-standards",
     "ERR:  title 2, video: its video is PAL, but the disc is declared NTSC. Players show no "
     "picture or a wrong one. Encode it in the video standard of the project, or choose the other "
     "standard."},
    {"dvdauthor",
     "WARN: attempt to update frame rate from 30000.0/1001.0 (NTSC VIDEO) to 25.0 (PAL/SECAM "
     "VIDEO / converted FILM); skipping",
     "dvdauthor-mixed-frame-rates",
     "WARN: title 2, video: its video has 25.0 (PAL/SECAM VIDEO / converted FILM) pictures"},
    {"dvdauthor", "WARN: attempt to update aspect ratio from 4:3 to 16:9; skipping",
     "dvdauthor-mixed-aspects",
     "WARN: title 2, video: its video is 16:9, but its titleset is declared 4:3."},
    {"dvdauthor", "WARN: attempt to update resolution from 720xfull to 352xhalf; skipping",
     "dvdauthor-mixed-sizes",
     "WARN: title 2, video: its picture is 352xhalf, but its titleset is declared 720xfull."},
    {"dvdauthor", "WARN: not a valid DVD frame rate: 0x02", "dvdauthor-frame-rate",
     "ERR:  title 2, video: its video has a frame rate that no DVD has (code 0x02)."},
    {"dvdauthor", "WARN: unknown mpeg2 aspect ratio 1", "dvdauthor-aspect-code",
     "INFO: title 2, video: its video names no aspect ratio of a DVD (code 1), so dvdauthor "
     "writes that of the titleset into it"},
    {"dvdauthor", "WARN: Unknown AC3 sample rate: 1", "dvdauthor-audio-rate",
     "ERR:  title 2, audio: its AC-3 sound has not 48,000 samples a second."},
    {"dvdauthor", "WARN: audio stream 1 was not autodetected", "dvdauthor-no-audio",
     "WARN: audio 2 has a language, but no title of the titleset has such a stream."},
    {"dvdauthor", "WARN: Skipping sector at inoffset 0, waiting for first VOBU...",
     "dvdauthor-skipped-sectors", "WARN: title 2: it does not begin with a navigation pack;"},
    {"dvdauthor", "ERR:  Partial sector read (936 bytes at inoffset 0x92800)",
     "dvdauthor-part-of-a-pack", "ERR:  title 2: it ends in the middle of a pack of 2048 bytes."},
    {"dvdauthor", "WARN: SCR reset at inoffset 0x123800. New back offset = -493129",
     "dvdauthor-clock", "WARN: title 2: its clock begins anew at byte 0x123800:"},
    {"dvdauthor",
     "WARN: Discontinuity of 51840 in audio channel 0 at inoffset 0x64000; please remultiplex "
     "input.",
     "dvdauthor-audio-gap",
     "WARN: title 2, audio: its sound has a gap of 0.576 s at byte 0x64000."},
    {"dvdauthor",
     "WARN: Audio pts for channel 0 moves backwards by 48311 at inoffset 0x136000; please "
     "remultiplex input.",
     "dvdauthor-audio-back",
     "WARN: title 2, audio: its sound goes back in time by 0.537 s at byte 0x136000."},
    {"dvdauthor", "WARN: Video PTS does not line up on a multiple of a field.",
     "dvdauthor-video-fields",
     "INFO: title 2, video: the times of its pictures are not whole fields apart."},
    {"dvdauthor", "ERR:  Cannot jump to title #5, only 1 exist", "dvdauthor-missing-target",
     "ERR:  a command leads to title #5, but there are only 1."},
    {"dvdauthor", "ERR:  Cannot find PGC with entry ptt", "dvdauthor-missing-target",
     "ERR:  a command leads to the ptt menu, but no menu is that."},
    {"dvdauthor", "ERR:  That form of jumping is not allowed", "dvdauthor-refused-command",
     "ERR:  a command leads where a DVD cannot go from its place."},
    {"dvdauthor", "ERR:  in VTS pgc 0, <post>", "dvdauthor-command-place",
     "ERR:  the command stands in VTS PGC 1, <post>."},
    {"dvdauthor", "ERR:  2 opening input video file \"nix.mpg\" -- No such file or directory",
     "dvdauthor-cannot-open", "ERR:  nix.mpg cannot be opened: No such file or directory."},
    {"dvdauthor", "ERR:  cannot create dir /proc/x: No such file or directory",
     "dvdauthor-cannot-write",
     "ERR:  the folder /proc/x cannot be made: No such file or directory."},
    {"spumux",
     "WARN: Button y coordinates are odd for button 1: 100x101-200x151; they may not display "
     "properly.",
     "spumux-odd-line", "INFO: title 2: buttons begin or end on an odd line, button 1 first."},
    {"spumux", "STAT: 0:00:00.000ERR:  Unable to open file nix.png", "spumux-no-picture",
     "ERR:  title 2: the picture nix.png cannot be opened."},
    {"spumux", "ERR:  File s.xml isn't a png", "spumux-no-picture",
     "ERR:  title 2: s.xml is no picture."},
    {"spumux", "WARN: Inconsistent picture widths, skipping line -1", "spumux-picture-size",
     "WARN: title 2: the pictures of its buttons differ in size."},
    {"spumux", "ERR:  PNG h3.png is too big: 800x600", "spumux-picture-size",
     "ERR:  title 2: the picture h3.png is larger than the screen: 800x600."},
    {"spumux", "ERR:  Button coordinates out of range (720,480): (100,101)-(900,151)",
     "spumux-button-outside",
     "ERR:  title 2: a button at (100,101)-(900,151) is not wholly within the picture of "
     "720,480."},
    {"spumux", "ERR:  Cannot pick button masks", "spumux-too-many-colours",
     "ERR:  title 2: its buttons have more colours than a menu can show."},
    {"spumux", "ERR:  Blank image, skipping line -1", "spumux-blank-image",
     "ERR:  title 2: there is nothing to see in the picture of its buttons."},
    {"mkisofs", "genisoimage: No space left on device. cannot fwrite 2048*1", "mkisofs-disk-full",
     "ERR:  the disk is full: the image is not whole."},
    {"mkisofs",
     "genisoimage: No such file or directory. Unable to open disc image file '/nodir/x.iso'.",
     "mkisofs-cannot-open", "ERR:  the image /nodir/x.iso cannot be written."},
    {"mkisofs", "genisoimage: No such file or directory. Invalid node - 'NOPE'.",
     "mkisofs-no-folder", "ERR:  there is nothing at NOPE to make an image of."},
    {"mkisofs", "genisoimage: Could not find correct 'VIDEO_TS' directory.", "mkisofs-no-dvd",
     "ERR:  what stands in the output folder is no whole DVD."},
    {"mkisofs", "genisoimage: Unable to make a DVD-Video image.", "mkisofs-no-dvd",
     "ERR:  what stands in the output folder is no whole DVD."},
    {"mkisofs", "genisoimage: Either VIDEO_TS.IFO or VIDEO_TS.VOB is not of correct size.",
     "mkisofs-wrong-size",
     "ERR:  VIDEO_TS.IFO or VIDEO_TS.VOB has not the size that the disc's tables name."},
    {"mkisofs", "genisoimage: Symlink D7/VIDEO_TS/x ignored - continuing.", "mkisofs-link-left-out",
     "WARN: D7/VIDEO_TS/x is a link that leads nowhere"},
    {"mkisofs", "File D6/big.bin is larger than 4GiB-1.", "mkisofs-large-file",
     "WARN: D6/big.bin in the output folder has more than 4 GiB."},
};

/// Put together from the formats in the tools' sources.
const std::vector<sample> from_formats = {
    {"mplex", "**ERROR: [mplex] Too many frame drops -exiting", "mplex-underrun",
     "ERR:  title 2: its streams need more data at once than a DVD can be read, in so many"},
    {"mplex", "++ WARN: [mplex] Target data rate lower than computed requirement!",
     "mplex-rate-too-high", "WARN: title 2: the bit rates that its streams name"},
    {"mplex",
     "++ WARN: [mplex] Sequence end marker found in video stream but single-segment splitting "
     "specified!",
     "mplex-sequence-end", "WARN: title 2, video: its video has a sequence end code"},
    {"mplex", "++ WARN: [mplex] No seq. header starting new sequence after seq. end!",
     "mplex-no-sequence-header", "WARN: title 2, video: its video goes on after a sequence end"},
    {"mplex", "++ WARN: [mplex] Sequence end without following I-frame!",
     "mplex-no-sequence-header", "WARN: title 2, video: its video goes on after a sequence end"},
    {"mplex",
     "**ERROR: [mplex] Illegal MPEG stream at offset (bits) 4711: supposed marker bit not found.",
     "mplex-damaged-video", "ERR:  title 2, video: its video is damaged."},
    {"mplex", "**ERROR: [mplex] Invalid MPEG Audio stream header.", "mplex-bad-header",
     "ERR:  title 2: the MPEG Audio does not begin as such a stream does."},
    {"mplex", "**ERROR: [mplex] INTERNAL ERROR: AU buffer overflow", "mplex-gave-up",
     "ERR:  title 2: mplex gave up: AU buffer overflow."},
    {"dvdauthor", "WARN: attempt to update mpeg format from mpeg2 to mpeg1; skipping",
     "dvdauthor-mixed-versions", "WARN: title 2, video: its video is mpeg1,"},
    {"dvdauthor", "WARN: attempt to update number of channels from 2ch to 6ch; skipping",
     "dvdauthor-mixed-channels", "INFO: a title's sound has 6ch, but its titleset"},
    {"dvdauthor", "WARN: attempt to update audio format from ac3 to mp2; skipping",
     "dvdauthor-mixed-audio", "WARN: a title's audio format is mp2, but its titleset"},
    {"dvdauthor", "WARN: unknown frame rate 7", "dvdauthor-frame-rate",
     "ERR:  title 2, video: its video has a frame rate that no DVD has (code 7)."},
    {"dvdauthor", "WARN: unknown mpeg1 aspect ratio 3", "dvdauthor-aspect-code",
     "INFO: title 2, video: its video names no aspect ratio of a DVD (code 3)"},
    {"dvdauthor", "WARN: video resolution was not autodetected", "dvdauthor-no-video",
     "WARN: the resolution of its video could not be found out."},
    {"dvdauthor", "ERR:  no VOBUs found.", "dvdauthor-no-vobus",
     "ERR:  title 2: it holds no navigation packs,"},
    {"dvdauthor", "ERR:  Error 5 while reading at inoffset 0x800: Input/output error",
     "dvdauthor-read-error", "ERR:  title 2: it cannot be read at byte 0x800: Input/output error."},
    {"dvdauthor", "ERR:  SCR moves backwards at inoffset 0x1000, remultiplex input: 10 < 20",
     "dvdauthor-clock", "ERR:  title 2: its clock goes back at byte 0x1000."},
    {"dvdauthor", "WARN: Audio channel 0 contains sync headers at inoffset 0x800 but has no PTS.",
     "dvdauthor-audio-no-time", "WARN: title 2, audio: its sound has no time stamp at byte 0x800."},
    {"dvdauthor", "WARN: Invalid audio channel 32 at inoffset 0x800", "dvdauthor-audio-channel",
     "WARN: title 2, audio: it holds sound that no DVD has,"},
    {"dvdauthor",
     "ERR:  Audio and video are too poorly synchronised at inoffset 0x800; you must remultiplex.",
     "dvdauthor-audio-and-video",
     "ERR:  title 2: its sound and its picture are too far apart at byte 0x800."},
    {"dvdauthor",
     "ERR:  Cannot infer pts for VOBU at inoffset 0x800 if there is no audio or video and it is "
     "the",
     "dvdauthor-no-time", "ERR:  title 2: it begins without picture and sound."},
    {"dvdauthor",
     "WARN: Cannot detect pts for VOBU at inoffset 0x800 if there is no audio or video",
     "dvdauthor-no-time", "WARN: title 2: there is neither picture nor sound at byte 0x800."},
    {"dvdauthor", "ERR:  pts 100 rounded up to 200 at rate 3003 lies within previous vobu 1",
     "dvdauthor-video-time", "ERR:  title 2, video: the times of its pictures do not follow"},
    {"dvdauthor", "WARN: GOP may not be closed on cell 2 of source title1.mpg of pgc 1",
     "dvdauthor-open-gop", "INFO: a cell begins with an open GOP."},
    {"dvdauthor", "ERR:  VOB /o/title1.mpg has too many cells (300, 256 allowed)",
     "dvdauthor-too-many-cells", "ERR:  /o/title1.mpg has more chapters"},
    {"dvdauthor", "ERR:  PGC 3 has too many programs (300, 256 allowed)",
     "dvdauthor-too-many-cells", "ERR:  title 3 has more chapters"},
    {"dvdauthor", "ERR:  Too many VTSs", "dvdauthor-too-many-titlesets",
     "ERR:  there are more titlesets"},
    {"dvdauthor", "ERR:  Can only have 128 commands for pre, post, and cell commands.",
     "dvdauthor-too-many-commands", "ERR:  a title or menu has more than 128 commands."},
    {"dvdauthor",
     "ERR:  Too many titlesets/titles/menus/etc for jumppad to handle.  Reduce complexity and/or "
     "disable",
     "dvdauthor-too-many-commands", "ERR:  there are more titles and menus than"},
    {"dvdauthor", "ERR:  Menu VOB reached 1gb at inoffset 0x40000000", "dvdauthor-menus-too-large",
     "ERR:  the menus together have more than 1 GB."},
    {"dvdauthor", "ERR:  Cannot jump to menu; none exist", "dvdauthor-missing-target",
     "ERR:  a command leads to a menu, but there is none."},
    {"dvdauthor", "ERR:  Cannot jump to a menu from a title, use 'call' instead",
     "dvdauthor-refused-command", "ERR:  a title's command jumps to a menu."},
    {"dvdauthor", "ERR:  Cannot 'call' another title, use 'jump' instead",
     "dvdauthor-refused-command", "ERR:  a command calls another title where it can only jump."},
    {"dvdauthor", "ERR:  Parse error 'syntax error' on token 'titel'", "dvdauthor-refused-command",
     "ERR:  a command is not understood at \"titel\"."},
    {"dvdauthor", "ERR:  Cannot find button '3' as referenced by the subtitle at inoffset 0x800",
     "dvdauthor-missing-button", "ERR:  title 2: button 3 of its stream has no command."},
    {"dvdauthor", "ERR:  cannot open /o/VIDEO_TS.IFO: Permission denied", "dvdauthor-cannot-open",
     "ERR:  /o/VIDEO_TS.IFO cannot be opened: Permission denied."},
    {"dvdauthor", "ERR:  Error 28 -- No space left on device -- writing data",
     "dvdauthor-cannot-write", "ERR:  the disc could not be written: No space left on device."},
    {"dvdauthor", "ERR:  no video format specified for VMGM", "dvdauthor-no-standard",
     "ERR:  neither the streams nor the project say whether it is NTSC or PAL."},
    {"dvdauthor", "WARN: attempt to update sampling rate from 48khz to 96khz; skipping",
     "dvdauthor-mixed-others",
     "WARN: the sampling rate of a stream is 96khz, but its titleset is declared 48khz."},
    {"dvdauthor", "WARN: aspect ratio was not autodetected", "dvdauthor-no-video",
     "WARN: the aspect ratio of its video could not be found out."},
    {"dvdauthor", "WARN: Audio ch 5 is not used!", "dvdauthor-audio-unused",
     "WARN: a sound stream of a file (number 5) is not on the disc."},
    {"dvdauthor", "WARN: audio sector out of range: 900 (vobu #7, pts 12.345)",
     "dvdauthor-audio-sector", "WARN: title 2, audio: sound and picture lie too far apart"},
    {"dvdauthor", "WARN: Transition from non-audio to audio VOB; assuming discontinuity.",
     "dvdauthor-audio-joint", "INFO: a file with sound follows one without"},
    {"dvdauthor",
     "WARN: Do not know how to compute the audio gap between 'a.vob' and 'b.vob', assuming "
     "discontinuity.",
     "dvdauthor-audio-joint", "INFO: the sound of b.vob does not go on where that of a.vob ends."},
    {"dvdauthor",
     "INFO: found video GOP at inoffset 0x800 without a preceding VOBU - creating VOBU",
     "dvdauthor-no-unit", "INFO: title 2, video: a group of pictures begins at byte 0x800 without"},
    {"dvdauthor", "WARN: First cell is not marked as a chapter in PGC 1, setting chapter flag",
     "dvdauthor-first-cell", "INFO: title 1 has no chapter at its beginning"},
    {"dvdauthor", "WARN: Source has no cells (a.vob) in PGC 1", "dvdauthor-no-cells",
     "WARN: nothing of a.vob is played."},
    {"dvdauthor", "ERR:  Limit of up to 36 buttons", "dvdauthor-too-many-buttons",
     "ERR:  a menu has more than 36 buttons."},
    {"dvdauthor", "WARN: Too many button streams at inoffset 0x800; ignoring buttons",
     "dvdauthor-too-many-buttons", "WARN: title 2: a stream holds more sets of buttons"},
    {"dvdauthor", "WARN: Too many subpicture tracks for a menu; 1 is allowed, 2 are present.",
     "dvdauthor-too-many-subpictures", "WARN: a menu has more than one subpicture track."},
    {"dvdauthor", "ERR:  Cannot 'call' a chapter within a menu", "dvdauthor-refused-command",
     "ERR:  a command calls a chapter of a menu."},
    {"dvdauthor", "ERR:  Cannot call to a menu in another titleset", "dvdauthor-refused-command",
     "ERR:  a command calls a menu in another titleset, which a DVD cannot do"},
    {"dvdauthor", "ERR:  Cannot jump to a chapter from FPC", "dvdauthor-refused-command",
     "ERR:  the first play command jumps to a chapter."},
    {"dvdauthor", "ERR:  Menus do not have chapters", "dvdauthor-refused-command",
     "ERR:  a command leads to a chapter of a menu."},
    {"dvdauthor", "ERR:  Cannot specify chapter when jumping to another menu",
     "dvdauthor-refused-command", "ERR:  a command leads to a chapter of a menu."},
    {"dvdauthor", "ERR:  Cannot omit menu/title if specifying vmgm/titleset",
     "dvdauthor-refused-command", "ERR:  a command names a titleset and no title or menu of it."},
    {"dvdauthor", "ERR:  Parser failed on code 'jupm title 1;'.", "dvdauthor-refused-command",
     "ERR:  the command \"jupm title 1;\" is not understood."},
    {"dvdauthor",
     "ERR:  Button command is too complex to fit in one instruction, and allgprm==true.",
     "dvdauthor-command-too-long", "ERR:  the command of a button is too long"},
    {"dvdauthor", "ERR:  Expression is too complicated, ran out of registers",
     "dvdauthor-command-too-long", "ERR:  a command calculates with more values"},
    {"dvdauthor", "WARN: Button value is 2, but it should be a multiple of 1024",
     "dvdauthor-button-value", "WARN: a command chooses button 2, which no menu can have."},
    {"dvdauthor", "WARN: Conflict in colormap between PGC 1 and 2", "dvdauthor-colours",
     "WARN: the colours of subtitles or buttons differ between PGC 1 and 2"},
    {"dvdauthor",
     "WARN: PGC 1 has the subtitle set for stream 0, mode widescreen which is illegal given the "
     "video characteristics.  Forcibly removing.",
     "dvdauthor-subpicture-removed",
     "WARN: PGC 1 has a subpicture (0, widescreen) for a picture of another shape"},
    {"dvdauthor",
     "WARN:  Cannot infer the stream id for subpicture 0 mode panscan in PGC 1; please manually "
     "specify.",
     "dvdauthor-subpicture-id",
     "WARN: the stream of subpicture 0 (panscan) in PGC 1 is not known."},
    {"dvdauthor", "ERR:  Error in parsing XML", "dvdauthor-wrong-xml",
     "ERR:  the XML has a fault."},
    {"dvdauthor", "ERR:  Cannot match start tag 'titel'.  Valid tags are:", "dvdauthor-wrong-xml",
     "ERR:  the XML has a tag that dvdauthor does not know there: titel."},
    {"dvdauthor", "ERR:  Cannot match attribute 'fiel' in tag 'vob'.  Valid attributes are:",
     "dvdauthor-wrong-xml",
     "ERR:  the XML has an attribute that dvdauthor does not know: fiel in vob."},
    {"dvdauthor", "ERR:  Read premature EOF", "dvdauthor-wrong-xml",
     "ERR:  the XML ends too early."},
    {"dvdauthor", "ERR:  no titles defined", "dvdauthor-no-titles", "ERR:  the XML has no title."},
    {"dvdauthor", "ERR:  Cannot parse chapter timestamp '5x'", "dvdauthor-chapter-time",
     "ERR:  \"5x\" is no time of a chapter."},
    {"mplex", "++ WARN: [mplex] File size exceeded before split-point in video stream",
     "mplex-split", "WARN: title 2: mplex begins a new file before its end."},
    {"mplex", "**ERROR: [mplex] Invalid frequency in MPEG Audio stream header.", "mplex-bad-header",
     "ERR:  title 2: the MPEG Audio states a sampling rate that there is not."},
    {"spumux", "ERR:  Button 1 cannot find color ffff00 in group 2", "spumux-too-many-colours",
     "ERR:  title 2: button 1 has a colour that its group of colours lacks: ffff00."},
    {"spumux", "WARN: Bad image,  skipping line 3", "spumux-no-picture",
     "WARN: title 2: a picture of its buttons cannot be read."},
    {"spumux", "WARN: No picture, skipping line 3", "spumux-no-picture",
     "WARN: title 2: a picture of its buttons is not there."},
    {"spumux", "WARN:Glyph for char U+4E00|\xE4 not found.", "spumux-missing-letter",
     "WARN: title 2: its font lacks characters, U+4E00 first."},
    {"spumux", "WARN:FT_Load_Glyph 0x12 (char 0x0041) failed.", "spumux-letter-failed",
     "WARN: title 2: letters of its font cannot be drawn (FT_Load_Glyph 0x12 (char 0x0041))."},
    {"spumux", "WARN:FT_Get_Glyph did not return a bitmap glyph.", "spumux-letter-failed",
     "WARN: title 2: letters of its font cannot be drawn."},
    {"spumux", "WARN:Unicode charmap not available for this font. Very bad!",
     "spumux-font-characters", "WARN: title 2: its font does not say which"},
    {"spumux", "WARN:No charmaps! Strange.", "spumux-font-characters",
     "WARN: title 2: its font does not say which"},
    {"spumux", "WARN:Selected font is not scalable. Using ppem=12.", "spumux-font-size",
     "WARN: title 2: its font has letters of certain sizes only; spumux takes those of 12 pixels."},
    {"spumux", "WARN: Incorrect pack header", "spumux-damaged-stream",
     "WARN: title 2: its stream is damaged."},
    {"spumux", "WARN: Unknown header 00 00 01 12", "spumux-damaged-stream",
     "WARN: title 2: something stands in its stream"},
    {"spumux", "WARN:  Read 14, expected 2048", "spumux-damaged-stream",
     "WARN: title 2: its stream is cut off: of 2048 bytes there are 14."},
    {"spumux", "INFO: Skipped 12 bytes of garbage", "spumux-damaged-stream",
     "WARN: title 2: 12 bytes of its stream belong to no packet."},
    {"mkisofs", "genisoimage: Unable to parse DVD-Video structures.", "mkisofs-no-dvd",
     "ERR:  what stands in the output folder is no whole DVD."},
    {"mkisofs", "genisoimage: No such file or directory. Failed to open VIDEO_TS.IFO",
     "mkisofs-no-dvd", "ERR:  VIDEO_TS.IFO in the output folder cannot be opened."},
    {"mkisofs", "genisoimage: Input/output error. Failed to read VIDEO_TS.IFO", "mkisofs-no-dvd",
     "ERR:  VIDEO_TS.IFO in the output folder cannot be read."},
    {"mkisofs", "genisoimage: Input/output error. Failed to seek VIDEO_TS.IFO", "mkisofs-no-dvd",
     "ERR:  VIDEO_TS.IFO in the output folder cannot be read."},
    {"mkisofs", "genisoimage: Implementation botch. Video pad for file VTS_01_0.IFO is -3",
     "mkisofs-wrong-size", "ERR:  VTS_01_0.IFO has not the size that the disc's tables name."},
    {"mkisofs", "genisoimage: Permission denied. Unable to open directory D/secret",
     "mkisofs-file-left-out",
     "ERR:  the folder D/secret cannot be read, and nothing of it is in the image."},
    {"mkisofs",
     "genisoimage: Directories too deep for 'D/a/b/c/d/e/f/g/h/i' (9) max is 8; ignored - "
     "continuing.",
     "mkisofs-file-left-out", "ERR:  D/a/b/c/d/e/f/g/h/i lies too deep in folders"},
    {"mkisofs", "genisoimage: Unknown file type (socket) D/x - ignoring and continuing.",
     "mkisofs-file-left-out", "ERR:  D/x is neither a file nor a folder (socket)"},
    {"mkisofs", "genisoimage: Error: 'D/a' and 'D/b' have the same Rock Ridge name 'A'.",
     "mkisofs-same-name", "ERR:  D/a and D/b would have one name in the image."},
    {"mkisofs", "genisoimage: Error: D/a and D/b have the same Joliet name", "mkisofs-same-name",
     "ERR:  D/a and D/b would have one name in the image."},
    {"mkisofs", "genisoimage: The file D/y is strange - ignoring", "mkisofs-file-left-out",
     "ERR:  something is not in the image: The file D/y is strange."},
    {"mkisofs", "genisoimage: The file D/y is strange; ignored - continuing.",
     "mkisofs-file-left-out", "ERR:  something is not in the image: The file D/y is strange;"},
    {"spumux", "ERR:  Too many colors in base picture", "spumux-too-many-colours",
     "ERR:  title 2: the picture under its buttons has more than four colours."},
    {"spumux", "ERR:  Overlapping buttons", "spumux-overlapping-buttons",
     "ERR:  title 2: two of its buttons overlap."},
    {"spumux", "ERR:  Encoded row takes more than 1440 bits.  Please simplify subtitle.",
     "spumux-too-complicated", "ERR:  title 2: a line of its picture has too many changes"},
    {"spumux", "WARN: Image too large (encoded size>64k), skipping line 4",
     "spumux-too-complicated", "WARN: title 2: a picture of it is too complicated for a DVD"},
    {"spumux", "WARN: Too many lines in a subtitle", "spumux-too-many-lines",
     "WARN: title 2: a cue has more lines than spumux takes."},
    {"spumux", "WARN: max_ucs_lines", "spumux-too-many-lines",
     "WARN: title 2: a cue has more lines than spumux takes."},
    {"spumux", "WARN: MAX_UCS exceeded!", "spumux-too-long-text",
     "WARN: title 2: a cue has more letters than spumux takes."},
    {"spumux", "WARN: Sub->text is longer than LINE_LEN.", "spumux-too-long-text",
     "WARN: title 2: a line of a cue is longer than spumux takes."},
    {"spumux", "WARN: glyph too wide!", "spumux-wide-letter",
     "WARN: title 2: a letter is too wide to be drawn."},
    {"spumux", "INFO: 3 bad line(s).", "spumux-bad-lines",
     "WARN: title 2: spumux did not understand 3 of the lines of its file."},
    {"spumux", "WARN:  Read error 5 -- Input/output error", "spumux-read-error",
     "ERR:  title 2: its stream cannot be read to its end: Input/output error."},
    {"spumux", "ERR:  Write error 28 -- No space left on device", "spumux-write-error",
     "ERR:  title 2: its stream cannot be written: No space left on device."},
    {"mkisofs", "genisoimage: Input/output error. cannot fwrite 2048*16", "mkisofs-cannot-write",
     "ERR:  the image could not be written: Input/output error."},
    {"mkisofs", "genisoimage: IFO is not of correct size aborting", "mkisofs-wrong-size",
     "ERR:  an IFO has not the size that it names itself."},
    {"mkisofs", "genisoimage: D/VIDEO_TS/VTS_01_0.IFO appears to be corrupted.",
     "mkisofs-damaged-ifo", "ERR:  D/VIDEO_TS/VTS_01_0.IFO is damaged."},
    {"mkisofs",
     "genisoimage: Permission denied. File D/VIDEO_TS/VTS_01_1.VOB is not readable - ignoring",
     "mkisofs-file-left-out",
     "ERR:  D/VIDEO_TS/VTS_01_1.VOB cannot be read and is not in the image."},
    {"mkisofs",
     "genisoimage: No such file or directory. Unable to stat file D/x - ignoring and continuing.",
     "mkisofs-file-left-out", "ERR:  D/x cannot be read and is not in the image."},
    {"mkisofs", "genisoimage: Input/output error. Cannot read from 'D/VIDEO_TS/VTS_01_1.VOB'",
     "mkisofs-read-error", "ERR:  D/VIDEO_TS/VTS_01_1.VOB cannot be read to its end."},
};

std::vector<sample> all_samples() {
  std::vector<sample> all = measured;
  all.insert(all.end(), from_formats.begin(), from_formats.end());
  return all;
}

std::string program(const sample& s) {
  return std::string(s.tool) + ".exe";
}

TEST(KnownMessages, EachIsToldWithItsItemItsMeaningAndWhatToDo) {
  for (const sample& s : all_samples()) {
    SCOPED_TRACE(s.printed);
    message_reader reader(program(s), title_2);
    reader.look_at(s.printed);
    ASSERT_EQ(reader.found().size(), 1u);
    const finding& f = reader.found()[0].what;
    EXPECT_EQ(f.rule, s.rule);
    EXPECT_EQ(log_line(f).substr(0, std::string(s.log).size()), s.log);
    EXPECT_EQ(log_line(f).find_first_of("{}~"), std::string::npos) << log_line(f);
    EXPECT_FALSE(f.consequence.empty());
    EXPECT_FALSE(f.remedy.empty());
  }
}

TEST(KnownMessages, EachOfTheTablesHasASample) {
  for (const std::string tool : {"mplex.exe", "dvdauthor.exe", "spumux.exe", "mkisofs.exe"}) {
    ASSERT_FALSE(known_messages_of(tool).empty());
    std::set<std::string_view> seen;
    for (const sample& s : all_samples()) {
      std::vector<std::string_view> parts;
      const auto messages = known_messages_of(program(s));
      const auto first = std::find_if(
          messages.begin(), messages.end(),
          [&](const known_message& one) { return is_message(s.printed, one.pattern, parts); });
      if (first != messages.end() && program(s) == tool)
        seen.insert(first->pattern);
    }
    for (const known_message& one : known_messages_of(tool))
      EXPECT_TRUE(seen.contains(one.pattern)) << one.pattern;
  }
}

// The runs that fail are those that failed before, and those whose disc is wrong for certain.
TEST(KnownMessages, OnlyTheseMakeAFailureOfWhatAToolOnlyWarnsOf) {
  std::set<std::string> rules;
  for (const std::string tool : {"mplex.exe", "dvdauthor.exe", "spumux.exe"})
    for (const known_message& one : known_messages_of(tool))
      if (one.severity == finding_severity::error &&
          one.pattern.find("WARN") != std::string_view::npos)
        rules.emplace(one.rule);
  EXPECT_EQ(rules, (std::set<std::string>{"dvdauthor-audio-rate", "dvdauthor-frame-rate",
                                          "dvdauthor-mixed-standards", "spumux-read-error"}));
}

TEST(KnownMessages, OrdinaryLinesAreNone) {
  for (const char* tool : {"mplex.exe", "dvdauthor.exe", "spumux.exe", "mkisofs.exe", "gm.exe"}) {
    message_reader reader(tool, title_2);
    for (const char* line :
         {"", "   INFO: [mplex] MUX STATUS: no under-runs detected.", "WARN: ", "ERR:  ", "ERR:",
          "STAT: fixing VOBU at 1MB (17/24, 66%)", "STAT: Processing title1.mpg...",
          "INFO: 1 subtitles added, 0 subtitles skipped, stream: 32, offset: 0.13",
          "INFO: a file called WARN: attempt to update tv format from a to b; skipping",
          "WARN: Previous sector: 0.901 - 0.997", " 67.91% done, estimate finish",
          "I: -input-charset not specified, using utf-8 (detected in locale settings)",
          "INFO: Detected subtitle file format: subviewer"})
      reader.look_at(line);
    EXPECT_TRUE(std::none_of(reader.found().begin(), reader.found().end(),
                             [](const message_reader::told& one) { return one.known; }))
        << tool;
  }
}

TEST(KnownMessages, AWarningOfWhichNothingIsKnownIsToldInTheToolsWords) {
  const auto found_in = [](const char* tool, const std::vector<std::string>& lines) {
    message_reader reader(tool, title_2);
    for (const std::string& line : lines)
      reader.look_at(line);
    return reader.found();
  };
  const auto found =
      found_in("dvdauthor.exe", {"WARN: the moon is 1 mile high", "WARN: the moon is 23 miles high",
                                 "WARN: the moon is 4 mile high", "STAT: at 5"});
  ASSERT_EQ(found.size(), 2u);
  EXPECT_FALSE(found[0].known);
  EXPECT_EQ(found[0].times, 2);
  EXPECT_EQ(found[0].what.rule, "tool-warning");
  EXPECT_EQ(
      log_line(found[0].what, 1),
      "WARN: title 2: dvdauthor says \"WARN: the moon is 1 mile high\". Perhaps nothing. Look "
      "in the log at what was said around it, and at this place on the finished disc.");
  EXPECT_EQ(found_in("spumux.exe", {"STAT: 0:00:01.000WARN: no luck"}).at(0).what.found,
            "spumux says \"WARN: no luck\"");
  EXPECT_EQ(found_in("mplex.exe", {"++ WARN: [mplex] no luck"}).at(0).what.found,
            "mplex says \"++ WARN: [mplex] no luck\"");
  EXPECT_TRUE(found_in("gm.exe", {"WARN: no luck"}).empty());
}

TEST(KnownMessages, AWarningThatGoesOnWithAnotherIsNone) {
  for (const char* tool : {"mplex.exe", "dvdauthor.exe", "spumux.exe"}) {
    message_reader reader(tool, title_2);
    for (const char* line :
         {"WARN: Previous sector: 0.901 - 0.997", "WARN: Current sector: 0.9 - 0.99",
          "WARN: Using SCR instead.", "WARN: (button #1=1024, #2=2048, etc)",
          "WARN:", "++ WARN: [mplex] N.b. a 20% or so discrepancy in variable bit-rate",
          "++ WARN: [mplex.exe] streams is common and harmless provided no time-outs will occur",
          "++ WARN: [mplex] Video e0: buf= 123512 frame=000000 sector=00000061",
          "WARN:Selected font is fixed-width."})
      reader.look_at(line);
    EXPECT_TRUE(reader.found().empty()) << tool;
  }
}

TEST(KnownMessages, AreToldOnceForEachItemWithHowOftenTheyCame) {
  message_reader reader("dvdauthor.exe", {});
  for (const char* line :
       {"STAT: Processing /o/menusub3.mpg...", "WARN: unknown mpeg2 aspect ratio 1",
        "STAT: Processing /o/title12.mpg...", "WARN: unknown mpeg2 aspect ratio 1",
        "WARN: unknown mpeg2 aspect ratio 12", "STAT: Processing /films/my film.vob...",
        "WARN: unknown mpeg2 aspect ratio 1"})
    reader.look_at(line);
  std::vector<std::string> lines;
  for (const message_reader::told& one : reader.found())
    lines.push_back(log_line(one.what, one.times));
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_THAT(lines[0], HasSubstr("INFO: menu 3, video: its video"));
  EXPECT_THAT(lines[1], HasSubstr("INFO: title 12, video: its video"));
  EXPECT_THAT(lines[1], HasSubstr("or 4:3 (said 2 times). Nothing"));
  EXPECT_THAT(lines[2], HasSubstr("INFO: /films/my film.vob: its video"));
}

TEST(KnownMessages, OfFilesWithoutNumberAreFew) {
  message_reader reader("dvdauthor.exe", {});
  for (int i = 0; i < 1000; ++i) {
    reader.look_at("STAT: Processing " + std::to_string(i) + ".vob...");
    reader.look_at("WARN: unknown mpeg2 aspect ratio 1");
  }
  EXPECT_EQ(reader.found().size(), 50u);
}

TEST(KnownMessages, NamesOfStrangersStayInTheirLine) {
  message_reader reader("mkisofs.exe", {});
  reader.look_at("File a\rERR:  b\x01 is larger than 4GiB-1.");
  ASSERT_EQ(reader.found().size(), 1u);
  EXPECT_THAT(log_line(reader.found()[0].what), HasSubstr("WARN: a?ERR:  b? in the output"));
}

TEST(KnownMessages, PatternsTakeAsLittleAsWillDo) {
  std::vector<std::string_view> parts;
  EXPECT_TRUE(is_message("  a 1 b 2 b 3", "a ~ b ~", parts));
  EXPECT_EQ(parts, (std::vector<std::string_view>{"1", "2 b 3"}));
  EXPECT_TRUE(is_message("x: a 1 b", "%a ~ b", parts));
  EXPECT_EQ(parts, std::vector<std::string_view>{"1"});
  EXPECT_TRUE(is_message("a [1] 2", "a [%] ~", parts));
  EXPECT_EQ(parts, std::vector<std::string_view>{"2"});
  EXPECT_FALSE(is_message("x: a 1 b", "a ~ b", parts));
  EXPECT_FALSE(is_message("a 1", "a ~ b", parts));
}

TEST(KnownMessages, ItemIsThatOfTheCallsFiles) {
  const auto of = [](const script_words& words, const std::string& output = {}) {
    finding f;
    f.item = item_of_call(words, output);
    return place_text(f);
  };
  EXPECT_EQ(of({"bin/mplex.exe", "-f", "8", "-o", "/o/title12.mpg", "/f/title3.mpg"}), "title 12");
  EXPECT_EQ(of({"bin/mplex.exe", "-f", "8", "-o", "/o/menu3.mpg", "/f/a.m2v"}), "menu 3");
  EXPECT_EQ(of({"bin/spumux.exe", "/app/menu4.xml"}, "/o/menusub4.mpg"), "menu 4");
  EXPECT_EQ(of({"bin/spumux.exe", "-s", "1", "/app/sub3-2.xml"}, "/o/title3.mpg"),
            "title 3, subtitle 2");
  EXPECT_EQ(of({"bin/gm.exe", "mogrify", "-draw", "x", "/app/highlight12.png"}), "menu 12");
  EXPECT_EQ(of({"bin/gm.exe", "convert", "null:", "/app/select3.png"}), "menu 3");
  EXPECT_EQ(of({"bin/dvdauthor.exe", "-x", "/app/config.xml"}), "disc");
  EXPECT_EQ(of({"bin/mplex.exe"}), "disc");
  EXPECT_EQ(of({"bin/mplex.exe", "-o", "/o/title99999999999999999999.mpg", "x"}), "disc");
}

TEST(KnownMessages, StandInTheLogBehindWhatTheToolSaid) {
  noting_host host;
  host.printed = {"++ WARN: [mplex] Discarding incomplete final frame AC3 stream 0!\n"};
  EXPECT_TRUE(run_script("bin/mplex.exe -f 8 -o /o/title1.mpg a.m2v b.ac3\n", host));
  EXPECT_EQ(host.notes,
            "[run /own/mplex.exe,-f,8,-o,/o/title1.mpg,a.m2v,b.ac3]\n"
            "++ WARN: [mplex] Discarding incomplete final frame AC3 stream 0!\n"
            "INFO: title 1, audio: the last frame of its sound is not whole and is left out. The "
            "sound ends a few hundredths of a second early. Nothing need be done.\n");
}

TEST(KnownMessages, OfAWrongDiscMakeTheRunAFailureAndNoImage) {
  noting_host host;
  host.printed = {"STAT: Processing /o/title2.mpg...\n",
                  "WARN: attempt to update tv format from ntsc to pal; skipping\n"};
  EXPECT_FALSE(run_script("bin/dvdauthor.exe c.xml\nbin/mkisofs.exe -o o.iso o\n", host));
  EXPECT_THAT(host.notes, HasSubstr("\nERR:  title 2, video: its video is PAL, but the disc is "
                                    "declared NTSC. Players"));
  EXPECT_THAT(host.notes, HasSubstr("INFO: no image is made"));
}

}  // namespace
}  // namespace corvane

#include "authoring/sample_projects.h"

#include "formats/text.h"

namespace corvane::testing_support {
namespace {

const char* const ntsc_subtitles =
    "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|";
const char* const pal_subtitles = "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1|";

}  // namespace

std::string stored_media(const std::string& name, path_style style) {
  return (style == path_style::windows ? "C:\\media\\" : "\\media\\") + name;
}

run_paths sample_run_paths(path_style style) {
  if (style == path_style::windows)
    return {"C:\\Program Files\\Corvane", "D:\\discs\\my dvd", style};
  return {"/home/anna/.local/share/corvane", "/home/anna/discs/my dvd", style};
}

void add_title(project& p, path_style style, const std::vector<std::string>& streams) {
  std::vector<std::string> paths;
  for (const std::string& name : streams)
    paths.push_back(stored_media(name, style));
  p.List11.push_back(join(paths, "/"));
  p.List1.push_back("title" + std::to_string(p.List11.size()) + ":" + join(streams, "/"));
  p.chapters.emplace_back("00:00:00.00");
  p.delay.emplace_back("0");
  p.subtitledata.emplace_back("<none>");
  p.subtitleoptions.emplace_back(p.globalregion == "NTSC" ? ntsc_subtitles : pal_subtitles);
}

void add_menu(project& p, path_style style, const std::string& video, const std::string& audio,
              const std::string& options, const std::string& buttons) {
  p.menulist.push_back(stored_media(video, style) + "/" +
                       (audio.empty() ? "" : stored_media(audio, style)));
  p.moremenuoptions.push_back(options);
  p.menubuttons.resize(p.menulist.size());
  p.menubuttons.back() = buttons;
}

sample elementary_titles(path_style style) {
  sample s{"elementary_titles", {}, sample_run_paths(style)};
  add_title(s.p, style, {"movie.m2v", "english.ac3", "french.mp2"});
  add_title(s.p, style, {"vts_01_1.vob"});
  add_title(s.p, style, {"extra.mpv", "extra.mpa"});
  s.p.chapters[0] = "00:00:00.00,00:05:10.25,00:12:30.50";
  s.p.chapters[2] = "";
  s.p.delay[2] = "-250";
  s.p.languagetags = {"Audio tag:\tENGLISH EN", "Audio tag:\tFRENCH FR"};
  s.p.isocreate = true;
  return s;
}

sample muxed_titles(path_style style) {
  sample s{"muxed_titles", {}, sample_run_paths(style)};
  add_title(s.p, style, {"one.vob"});
  add_title(s.p, style, {"two & a half.mpg"});
  return s;
}

sample plain_menus(path_style style) {
  sample s{"plain_menus", {}, sample_run_paths(style)};
  s.p.globalregion = "PAL";
  add_title(s.p, style, {"movie.m2v", "movie.ac3"});
  add_title(s.p, style, {"extra.m2v", "extra.ac3"});
  add_menu(s.p, style, "main.m2v", "main.ac3", " 1\t00:00:00.0\t00:00:05.0\t 2",
           " 0/0/100/3/exit/black/black| 40/ 100/ 240/ 140/jump title 1/blue/orange");
  add_menu(s.p, style, "still.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1",
           " 10/ 20/ 110/ 23/jump menu 1/white/grey");
  s.p.postinfo = {"call menu                ", "exit                     "};
  s.p.firstplay = "jump titleset 1 menu";
  s.p.languagetags = {"Audio tag:\tAFRIKAANS AF ", "Subtitle tag:\tGERMAN DE "};
  return s;
}

sample jump_table(path_style style) {
  sample s{"jump_table", {}, sample_run_paths(style)};
  s.where.out += " & more";
  s.p.jumptable = true;
  s.p.isocreate = true;
  add_title(s.p, style, {"movie.m2v", "movie.ac3"});
  add_title(s.p, style, {"vts_01_1.vob"});
  add_title(s.p, style, {"extra.m2v", "extra.ac3"});
  add_title(s.p, style, {"last.m2v", "last.ac3"});
  s.p.chapters[0] = "00:00:00.00,00:05:10.25";
  const std::string bitmap = stored_media("play.bmp", style);
  const std::string pressed = stored_media("pressed.bmp", style);
  add_menu(s.p, style, "main.m2v", "main.ac3", "0\t00:00:00.0\t00:00:00.0\t1",
           " 0/0/100/3/jump title 1 chapter  2/black/black| 40/ 99/ 240/ 140/jump menu 3/green/" +
               pressed + "| 300/ 100/ 330/ 110/jump titleset 1 menu/" + bitmap + "/" + pressed);
  add_menu(s.p, style, "second.m2v", "", " 1\t00:00:00.5\t00:00:10.0\t 3",
           " 40/ 100/ 240/ 104/jump title 4/" + bitmap + "/cyan| 40/ 200/ 240/ 204/exit/brown/" +
               "magenta");
  add_menu(s.p, style, "empty.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1", " ");
  s.p.postinfo = {"call menu 2              ", "call last menu           ",
                  "jump title 1             ", "g2=5; call menu          "};
  s.p.firstplay = "jump title 2";
  return s;
}

sample one_menu(path_style style) {
  sample s{"one_menu", {}, sample_run_paths(style)};
  s.p.jumptable = true;
  add_title(s.p, style, {"movie.m2v", "movie.ac3"});
  add_menu(s.p, style, "main.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1",
           " 0/0/100/3/jump title 1/black/yellow");
  return s;
}

sample subtitles(path_style style) {
  sample s{"subtitles", {}, sample_run_paths(style)};
  add_title(s.p, style, {"silent.m2v", "silent.ac3"});
  add_title(s.p, style, {"movie.m2v", "movie.ac3"});
  s.p.subtitledata[1] =
      stored_media("english.srt", style) + "/" + stored_media("deutsch & mehr.sub", style);
  s.p.subtitleoptions[1] =
      "left,top,10,20,30,40,24.5,dejavu sans.ttf,352,238,23.976,CP1252|"
      "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|";
  const std::string file = "DejaVu Sans.TTF";
  s.where.fonts = font_list(
      {{"DejaVu Sans", file, style == windows ? file : "/usr/share/fonts/" + file}}, style);
  return s;
}

std::vector<sample> all_samples(path_style style) {
  return {elementary_titles(style), muxed_titles(style), plain_menus(style),
          jump_table(style),        one_menu(style),     subtitles(style)};
}

}  // namespace corvane::testing_support

#include "project/stream_dialogs.h"

namespace corvane {

file_dialog video_dialog(bool muxed_too) {
  file_dialog dialog;
  dialog.title = "select video stream";
  dialog.filter = "mpeg elementry stream(*.m2v, *.m1v,*.mpv)|*.m2v;*.m1v;*.mpv";
  if (muxed_too)
    dialog.filter += "|mpeg with NAV packets(*.vob, *.mpg, *.mpeg)|*.vob; *.mpg; *.mpeg";
  return dialog;
}

file_dialog audio_dialog() {
  file_dialog dialog;
  dialog.title = "select audio stream";
  dialog.filter = "audio stream(*.ac3, *.mp2, *.mpa)|*.ac3;*.mp2;*.mpa";
  return dialog;
}

}  // namespace corvane

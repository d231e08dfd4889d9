#include "import/encode_arguments.h"

#include "examine/measures.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace corvane {
namespace {

// A disc allows a buffer of 1,835,008 bits. But players read for a tenth of a second before they
// show the first picture, and a stream of a high rate that takes all of that buffer soon after its
// beginning comes too late (mplex ends with under-runs). What a buffer of this size evens out has
// been read by then, or nearly, and no picture is seen to be worse for it.
constexpr std::int64_t buffer_bits = 1'200'000;
constexpr std::int64_t first_bits = 800'000;

std::string number(std::int64_t n) {
  return std::to_string(n);
}

std::string fraction(source_ratio ratio) {
  return ratio.under == 1 ? number(ratio.over) : number(ratio.over) + "/" + number(ratio.under);
}

std::string seconds(double s) {
  return decimal_text(s, 6);
}

class filter_chain {
 public:
  void add(const std::string& filter) { text_ += (text_.empty() ? "" : ",") + filter; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

bool is_pal(const picture_work& work) {
  return work.geometry.disc.height % 288 == 0;
}

/// The names that swscale has for matrices.
std::string scale_matrix(const std::string& matrix) {
  if (matrix == "bt709" || matrix == "smpte240m" || matrix == "fcc")
    return matrix;
  return matrix.starts_with("bt2020") ? "bt2020" : "bt601";
}

void turn(filter_chain& chain, const picture_work& work) {
  if (work.mirrored)
    chain.add("hflip");
  if (work.turned == 90)
    chain.add("transpose=clock");
  else if (work.turned == 180)
    chain.add("hflip,vflip");
  else if (work.turned == 270)
    chain.add("transpose=cclock");
}

/// High dynamic range, for the luminance of a usual screen (100 cd/m2), scaled by the way.
void tone_map(filter_chain& chain, const picture_work& work) {
  const picture_size size = work.geometry.scaled;
  const std::string own = is_pal(work) ? "bt470bg" : "smpte170m";
  chain.add("zscale=pin=bt2020:tin=" + work.transfer + ":min=bt2020nc:rin=" +
            (work.full_range ? "full" : "limited") + ":t=linear:npl=100,format=gbrpf32le");
  chain.add("zscale=p=bt709,tonemap=hable:desat=0");
  chain.add("zscale=w=" + number(size.width) + ":h=" + number(size.height) + ":f=lanczos:p=" + own +
            ":t=bt709:m=" + own + ":r=limited,format=yuv420p");
}

/// To a disc's size, colours and range, lines of one field kept apart from those of the other.
void scale(filter_chain& chain, const picture_work& work) {
  const picture_size size = work.geometry.scaled;
  std::string filter = "scale=" + number(size.width) + ":" + number(size.height) +
                       ":flags=lanczos+accurate_rnd+full_chroma_int";
  if (work.motion == picture_motion::kept_fields)
    filter += ":interl=1";
  if (work.matrix != "rgb")
    filter += ":in_color_matrix=" + scale_matrix(work.matrix) +
              ":in_range=" + (work.full_range ? "pc" : "tv");
  chain.add(filter + ":out_color_matrix=bt601:out_range=tv,format=yuv420p");
}

void fit(filter_chain& chain, const picture_work& work) {
  const picture_geometry& g = work.geometry;
  if (work.cropped)
    chain.add("crop=" + number(g.cropped.width) + ":" + number(g.cropped.height) + ":" +
              number(g.crop_left) + ":" + number(g.crop_top));
  // Multiplied by what is not transparent, a picture is what stands over black.
  const bool alpha = work.alpha && work.colours == colour_work::scale;
  if (alpha)
    chain.add("format=gbrap,premultiply=inplace=1,format=gbrp");
  if (work.colours == colour_work::tone_map) {
    tone_map(chain, work);
  } else if (alpha) {
    picture_work rgb = work;
    rgb.matrix = "rgb";
    scale(chain, rgb);
  } else {
    scale(chain, work);
  }
  if (g.has_bars())
    chain.add("pad=" + number(g.disc.width) + ":" + number(g.disc.height) + ":" + number(g.left) +
              ":" + number(g.top));
}

/// Pictures at even times from 0 on.
std::string even_rate(const picture_work& work) {
  source_ratio rate = work.rate;
  if (work.motion == picture_motion::made_fields)
    rate.over *= 2;
  return "fps=" + fraction(rate) + ":start_time=0";
}

/// Behind what makes rates even: how many pictures those seconds are goes by the rate.
void hold_last(filter_chain& chain, const picture_work& work) {
  if (work.held <= 0)
    return;
  // The fields of a picture that moves would go to and fro. Of a repeated picture none can be made
  // of the other, so this is done before.
  constexpr double last_pictures = 2.5;
  if (work.motion == picture_motion::kept_fields)
    chain.add("bwdif=mode=send_frame:parity=" + std::string(work.top_first ? "tff" : "bff") +
              ":enable='gte(t," +
              seconds(std::max(0.0, work.shown - last_pictures / work.rate.value())) + ")'");
  chain.add("tpad=stop_mode=clone:stop_duration=" + seconds(work.held));
}

}  // namespace

std::string picture_filter(const picture_work& work) {
  filter_chain chain;
  if (work.speed != source_ratio{1, 1})
    chain.add("setpts=PTS*" + fraction(inverse(work.speed)));
  if (work.deinterlace != deinterlacing::none)
    chain.add(std::string("bwdif=mode=") +
              (work.deinterlace == deinterlacing::to_fields ? "send_field" : "send_frame") +
              ":parity=" + (work.source_top_first ? "tff" : "bff"));
  turn(chain, work);
  // What is not shown need not be scaled, and what is shown twice only once.
  if (work.is_dense)
    chain.add(even_rate(work));
  fit(chain, work);
  if (!work.is_dense)
    chain.add(even_rate(work));
  hold_last(chain, work);
  if (work.motion == picture_motion::made_fields)
    chain.add("interlace=scan=tff:lowpass=complex");
  return chain.text();
}

argument_list video_encoder(const picture_work& work, const video_bits& bits,
                            const std::vector<double>& chapters) {
  const bool constant = bits.quality == import_quality::constant;
  argument_list a = {"-c:v",
                     "mpeg2video",
                     "-pix_fmt",
                     "yuv420p",
                     "-aspect",
                     work.geometry.aspect == disc_aspect::four_three ? "4:3" : "16:9",
                     "-g",
                     number(work.group()),
                     "-bf",
                     "2",
                     "-dc",
                     "10",
                     "-mbd",
                     "rd",
                     "-trellis",  // as large a gain as all else together
                     "1",
                     "-b:v",
                     number(constant ? bits.peak : bits.mean),
                     "-maxrate",
                     number(bits.peak),
                     "-bufsize",
                     number(buffer_bits),
                     "-rc_init_occupancy",
                     number(first_bits)};
  const auto add = [&a](std::initializer_list<std::string> more) {
    a.insert(a.end(), more.begin(), more.end());
  };
  // With more bits than it may use, an encoder comes to the least quantizer wherever they suffice.
  if (constant)
    add({"-qmin", number(bits.quantizer)});
  if (work.has_fields())
    add({"-flags", "+ilme+ildct", "-top", work.top_first ? "1" : "0"});
  std::string times;
  for (const double chapter : chapters)
    if (chapter > 0)
      times += (times.empty() ? "" : ",") + seconds(chapter);
  if (!times.empty())
    add({"-force_key_frames", times});
  add({"-fps_mode", "passthrough", "-f", "mpeg2video"});
  return a;
}

std::string sound_filter(const sound_work& work, source_ratio speed, double begin, double end,
                         bool even_loudness) {
  filter_chain chain;
  // Silence before a stream that begins late, and in gaps; what comes before `begin` is cut.
  const auto samples = std::llround(begin * 48000);
  // A tenth of a second is usual, for the uneven times of many files; at a join that can be heard.
  chain.add("aresample=48000:async=1:first_pts=" + number(samples) +
            (work.is_joined ? ":min_hard_comp=0.02" : ""));
  if (speed != source_ratio{1, 1}) {
    // A whole number for film of 24 (50000) and of 23.976 pictures a second (50050).
    const source_ratio faster = times({48000, 1}, speed);
    chain.add("asetrate=" + number(faster.over / faster.under) + ",aresample=48000");
  }
  if (even_loudness)
    chain.add("loudnorm=I=-23:TP=-2:LRA=20,aresample=48000");
  chain.add(std::string("aformat=channel_layouts=") + (work.channels == 6   ? "5.1"
                                                       : work.channels == 1 ? "mono"
                                                                            : "stereo"));
  if (end > 0)
    chain.add("apad,atrim=end=" + seconds(end));
  return chain.text();
}

argument_list sound_encoder(const sound_work& work) {
  const bool mpeg = work.kind == disc_sound::mp2;
  return {"-c:a", mpeg ? "mp2" : "ac3", "-b:a", number(work.bit_rate), "-ar", "48000",
          "-f",   mpeg ? "mp2" : "ac3"};
}

}  // namespace corvane

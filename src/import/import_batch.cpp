#include "import/import_batch.h"

#include "examine/examination.h"
#include "formats/text.h"
#include "import/finish_import.h"
#include "import/import_bits.h"
#include "import/language_codes.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/imported_title.h"

#include <algorithm>
#include <set>

namespace corvane {
namespace {

/// What the titles after it must be like.
titleset_demands demands_after(const import_plan& plan, const titleset_demands& before) {
  titleset_demands after = plan.demands;
  if (before.sounds)
    return after;
  after.sounds.emplace();
  for (const sound_work& work : plan.sound.streams)
    after.sounds->push_back({work.kind, work.channels, work.language});
  for (const text_plan& text : plan.texts)
    after.subtitle_languages.push_back(text.language);
  return after;
}

void follow_tags(titleset_demands& demands, const import_plan& plan) {
  demands.subtitle_languages = plan.subtitle_tags;
  for (std::size_t i = 0; demands.sounds && i < demands.sounds->size(); ++i)
    (*demands.sounds)[i].language = i < plan.sound_tags.size() ? plan.sound_tags[i] : "";
}

/// The plan of what is wanted of a file.
import_plan plan_of(const probed_source& source, const titleset_demands& demands,
                    const import_place& place) {
  source_facts facts = source.facts;
  std::erase_if(facts.streams,
                [&](const source_stream& stream) { return !source.is_wanted(stream); });
  std::vector<sidecar> beside = source.beside;
  std::erase_if(beside, [&](const sidecar& text) { return !source.is_wanted(text); });
  import_plan plan = import_plan_for(facts, beside, demands, place.choices, place.preferred);
  for (const source_stream& stream : source.facts.streams)
    if (!source.is_wanted(stream))
      plan.streams.push_back({stream.index, stream_fate::left_out, "as you chose"});
  return plan;
}

bool can_be_made(const batch_entry& entry) {
  return entry.problem.empty();
}

/// The jobs share what room there is.
void share_bits(import_batch& batch, const import_place& place) {
  std::vector<import_job> jobs;
  for (const batch_entry& entry : batch.entries)
    if (can_be_made(entry))
      jobs.push_back(entry.job);
  batch.problem = settle_bits(jobs, place.choices, place.used).value_or("");
  auto job = jobs.begin();
  for (batch_entry& entry : batch.entries)
    if (can_be_made(entry)) {
      entry.job = *job++;
      entry.bytes = disc_bytes_of({entry.job});
    }
}

/// As far as each has one: a tag counts for the stream of its number.
std::vector<std::string> entries_of(const std::vector<std::string>& codes) {
  std::vector<std::string> entries;
  for (const std::string& code : codes) {
    const std::string_view entry = language_entry(code);
    if (entry.empty())
      break;
    entries.emplace_back(entry);
  }
  return entries;
}

std::vector<std::string> stored(const std::vector<std::string>& files) {
  std::vector<std::string> paths;
  paths.reserve(files.size());
  for (const std::string& file : files)
    paths.push_back(stored_from_native(file));
  return paths;
}

}  // namespace

bool probed_source::is_wanted(const source_stream& stream) const {
  return std::ranges::find(unwanted_streams, stream.index) == unwanted_streams.end();
}

bool probed_source::is_wanted(const sidecar& text) const {
  return std::ranges::find(unwanted_beside, text.file) == unwanted_beside.end();
}

probed_source look_into(const std::string& file, const source_prober& probe) {
  probed_source source;
  source.file = absolute_path(file);
  result<source_facts> facts = probe(source.file);
  if (!facts) {
    source.problem = facts.error;
    return source;
  }
  source.facts = *std::move(facts.value);
  const std::string name = native_file_name(source.file);
  const std::string folder = source.file.substr(0, source.file.size() - name.size());
  source.beside = sidecars_of(name, files_in(folder.empty() ? "." : folder));
  for (sidecar& text : source.beside)
    text.file = folder + text.file;
  for (sidecar& text : source.beside)
    look_into_text(text);
  return source;
}

titleset_demands demands_of_project(const project& p) {
  disc_description first = disc_of(p);
  const disc_description whole = first;
  if (first.titles.size() > 1)
    first.titles.resize(1);
  first.menus.clear();
  fact_store store;
  examination look(first, examination::depth::beginnings, store);
  while (look.step(1000)) {
  }
  facts_by_path facts;
  for (const disc_title& title : first.titles)
    for (const std::string& stream : title.streams)
      if (const std::string file = native_from_stored(stream); auto known = store.find(file, false))
        facts.emplace(file, std::move(known));
  return demands_of(whole, facts);
}

import_batch plan_batch(const std::vector<probed_source>& sources, const titleset_demands& demands,
                        const import_place& place) {
  import_batch batch;
  titleset_demands now = demands;
  std::set<std::string> names;
  // Some file systems know a name in capitals for the same.
  const auto is_taken = [&](const std::string& file) {
    return names.contains(lower(file)) || place.is_taken(file);
  };
  for (const probed_source& source : sources) {
    batch_entry& entry = batch.entries.emplace_back();
    entry.problem = source.problem;
    if (!can_be_made(entry))
      continue;
    import_job& job = entry.job;
    job.source = source.file;
    job.plan = plan_of(source, now, place);
    entry.problem = job.plan.problem;
    if (!can_be_made(entry))
      continue;
    job.files = import_names(place.folder, source.file, job.plan, is_taken);
    if (const auto why = why_not_in_script(job)) {
      entry.problem = "its name " + *why;
      continue;
    }
    for (const std::string& file : job.files.all())
      names.insert(lower(file));
    now = demands_after(job.plan, now);
    follow_tags(now, job.plan);
  }
  share_bits(batch, place);
  return batch;
}

void add_to_project(document& doc, const import_job& job) {
  const import_plan& plan = job.plan;
  // Titles that were planned before it may not have come.
  const titleset_demands now = demands_of_project(doc.p);
  imported_title title;
  std::vector<std::string> streams{job.files.video};
  streams.insert(streams.end(), job.files.sounds.begin(), job.files.sounds.end());
  title.streams = stored(streams);
  title.chapters = plan.chapters;
  title.delay = plan.sound.delay();
  std::vector<std::string> texts, languages;
  for (std::size_t i = 0; i < job.files.texts.size(); ++i)
    if (has_text(job, i)) {
      texts.push_back(job.files.texts[i]);
      languages.push_back(plan.texts[i].language);
    }
  title.subtitles = stored(texts);
  add_imported_title(doc, title, plan.demands.standard.value_or(video_standard::ntsc));
  set_language_tags(doc, disc_language::stream_kind::audio,
                    entries_of(sound_tags_beside(now, plan)));
  set_language_tags(doc, disc_language::stream_kind::subpicture,
                    entries_of(subtitle_tags_beside(now, languages)));
}

}  // namespace corvane

// A column of texts in a list.
#pragma once

class wxDataViewColumn;

namespace corvane {

/// A column whose texts are cut at their end where there is no room. `width`: pixels. The list that
/// it is appended to owns it.
wxDataViewColumn* text_column(const char* title, unsigned model_column, int width);

}  // namespace corvane

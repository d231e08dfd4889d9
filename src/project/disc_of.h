// The disc that the project asks for: the rows of all lists, read once, as one typed description.
#pragma once

#include "disc/disc_description.h"
#include "project/project.h"

namespace corvane {

/// The disc of the project's rows, whatever hand-edited XML there is. Made anew each time that it
/// is needed; the largest project takes about a millisecond.
///
/// Rows may be missing, uneven or odd: projects are edited by hand, and a file can be cut off. A
/// row that is missing reads as that of a new title or menu. An empty stream stays one; a blank
/// button record is no button; of a menu's files the third and further ones are kept and never
/// used; a subtitle without settings has those of the last settings row, or the region's defaults;
/// a blank post command is none; a tag row that begins neither "Aud" nor "Sub" is left out.
disc_description disc_of(const project& p);

}  // namespace corvane

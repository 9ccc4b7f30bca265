#pragma once

#include "input/lineReader_p.h"

class LanqorInputData;

/// The file of @p data for a reader that stands outside the class: the opening that the object
/// keeps (LanqorInputData::setKeepFileOpen), or else one of its own.
InputFile inputFileOf(const LanqorInputData &data);

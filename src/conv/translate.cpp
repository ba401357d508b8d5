#include "conv/translate.h"

#include "conv/stepping.h"

namespace vel {

const translation general_translation = translation_by<walked_source, no_states>;
const translation wide2_source_translation = translation_by<unit_source<2>, no_states>;
const translation wide4_source_translation = translation_by<unit_source<4>, no_states>;
const translation single_byte_translation = translation_by<byte_source, no_states>;

} // namespace vel

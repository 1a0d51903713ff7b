/* One model file in another syntax. */
#pragma once

#include <string>
#include <vector>

#include "convert/writers.h"
#include "model/model_file.h"

namespace inspect {

/* The file, which is well formed, in YIN or in compact syntax. What was written is read again: it has the file's
 * statements and arguments, or ConvertError is thrown. `dirs` are the directories of modules that the file imports. */
Written Convert(const ModelFile &file, bool toYin, const std::vector<std::string> &dirs);

} // namespace inspect

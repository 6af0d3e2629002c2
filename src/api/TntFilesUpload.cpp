#include "api/TntFilesUpload.h"

namespace API {

MultipartBody TntFilesUpload::multipartBody() const
{
    MultipartWriter writer(boundary);
    for (const QString &file : files)
        writer.addTntFile(file);
    return std::move(writer).finish();
}

} // namespace API

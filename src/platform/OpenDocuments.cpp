#include "platform/OpenDocuments.h"

OpenDocuments::~OpenDocuments() = default;

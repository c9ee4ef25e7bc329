#include "platform/network/SessionConfiguration.h"

#include <QFile>

SessionConfiguration SessionConfiguration::defaultSessionConfiguration()
{
    SessionConfiguration configuration;
    configuration.certificateAuthorityFile = QFile::decodeName(qgetenv("SSL_CERT_FILE"));
    return configuration;
}

#include "commands/UserInfoOwner.h"

UserInfoOwner::~UserInfoOwner() = default;

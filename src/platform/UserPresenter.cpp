#include "platform/UserPresenter.h"

Presentation::~Presentation() = default;

ProgressPresentation::~ProgressPresentation() = default;

UserPresenter::~UserPresenter() = default;

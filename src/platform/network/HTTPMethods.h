#pragma once

#include "platform/network/URLRequest.h"

/// A method of requests, and what HTTP calls it.
struct HTTPMethod
{
    URLRequest::Method method;
    const char *name;
};

/// All of them.
inline constexpr HTTPMethod httpMethods[] = {
    {URLRequest::Method::Get, "GET"},
    {URLRequest::Method::Head, "HEAD"},
    {URLRequest::Method::Post, "POST"},
    {URLRequest::Method::Put, "PUT"},
    {URLRequest::Method::Patch, "PATCH"},
    {URLRequest::Method::Delete, "DELETE"},
    {URLRequest::Method::Options, "OPTIONS"},
};

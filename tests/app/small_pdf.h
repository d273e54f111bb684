// Makes a real PDF document, small enough to be converted in a moment.
#pragma once
#include <string>

// `pages` pages of one inch, each with its number written on it.
std::string SmallPdf(int pages);

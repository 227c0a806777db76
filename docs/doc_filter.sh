#!/bin/sh
# Doxygen input filter: the headers document their contracts in plain //
# comments; hand them to Doxygen as /// documentation comments. Comments at
# the end of a line of code become trailing member documentation (///<).
sed -e 's|^\([[:space:]]*\)//\([^/]\)|\1///\2|' -e 's|^\([[:space:]]*\)//$|\1///|' \
    -e 's|\([;,{]\)[[:space:]]*//[[:space:]]\(.*\)$|\1  ///< \2|' "$1"

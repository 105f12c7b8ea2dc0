#!/bin/sh
# Shows a header to Doxygen: plain comments stand for documentation, `//` before a declaration and
# after one on its line. Rulers, empty comments and closing namespace comments are left as they are.
sed -E \
  -e '/^ *\/\/ ---/b' \
  -e 's/^[^/]*\)( const)?( noexcept)?( override)? = (default|delete);$//' \
  -e 's|^( *)// ?|\1/// |' \
  -e 's|([;,{(]\|[A-Za-z0-9_}]) +// (.*)$|\1  ///< \2|' \
  -e 's|^(} +)///< namespace|\1// namespace|' "$1"

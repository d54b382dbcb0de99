# Doxygen does not find the scope of a specialisation that is named with it, as in std::hash<DString>.
/^template <>$/s/^/namespace std { /
/^struct std::/,/^};/{
    s/^struct std::/struct /
    s/^};/}; }/
}
# What a reader need not know ends a header; the line that stays closes the include guard.
/^\/\/ Implementation details only past this point\.$/,$ {
    $!d
}

# Doxygen does not find the scope of a specialisation that is named with it, as in std::hash<DString>.
/^template <>$/s/^/namespace std { /
/^struct std::/,/^};/{
    s/^struct std::/struct /
    s/^};/}; }/
}

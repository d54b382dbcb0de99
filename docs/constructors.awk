# Writes out the constructors that a class takes over with a using-declaration, under its own name and each with the comment of
# that declaration. Of these Doxygen shows none that the base has taken over itself, and the others under the base's name,
# its copy constructor among them. For headers as clang-format lays them out: members are indented by four blanks.
/^(class|struct) .*\{$/ {
    name = $0
    sub(/( final)?( : .*)? *\{$/, "", name)
    sub(/.* /, "", name)
}

/^    \/\/\/ / { comment = comment substr($0, 8) }
/^    template </ { constructor = $0 }

constructor !~ /\(/ && $0 ~ "^    (explicit )?" name "\\(" { is_open = 1 }
is_open {
    constructor = constructor $0
    if (/[;}]$/) {
        gsub(/  +/, " ", constructor)
        sub(/( : .*)? *\{\}$/, ";", constructor)
        if (constructor !~ name "\\(" name " const&") made[name, ++count[name]] = constructor
        is_open = 0
    }
}

# On the line of the declaration, whose comment stands before the first of them already.
/^    using .*::.*;$/ {
    base = substr($2, 1, index($2, "::") - 1)
    for (i = 1; i <= count[base]; ++i) {
        taken = made[base, i]
        sub(base "\\(", name "(", taken)
        made[name, ++count[name]] = taken
        $0 = (i == 1 ? "   " : $0 " /**" comment " */") taken
    }
}

!is_open && !/^    (\/\/\/|template <)/ { comment = constructor = "" }
{ print }

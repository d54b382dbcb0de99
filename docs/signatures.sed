# template <class T, class = kelcl::IfText<T>> is shown as template <Text T>; the reference's first page says what these are.
s/class T, class U, class = (kelcl::)?IfText<T>, class = (kelcl::)?IfText<U>/Text T, Text U/
s/class T, class S, class = IfText<std::decay_t<T>>/Text T, class S/
s/class T, class = IfText<std::decay_t<T>>/Text T/
s/class Path, class = kelcl::IfPath<Path>/class Path/
s/class F, kelcl::IfTest<F> = 0/Test F/
s/class (\w+), class = (kelcl::)?If(Other)?(\w+)<\1>/\4 \1/

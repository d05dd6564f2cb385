# What Parse::Win32Registry reads of a registry file, one line for each key and value.
use strict;
use warnings;
no warnings 'recursion';
use Encode;
use Parse::Win32Registry;

sub tell_key {
    my ($path, $key) = @_;
    print "K ", unpack('H*', $path), "\n";
    for my $value ($key->get_list_of_values) {
        print join('|', 'V ' . unpack('H*', $path), unpack('H*', encode('cp1252', $value->get_name)), $value->get_type, unpack('H*', $value->{_data})), "\n";
    }
    for my $child ($key->get_list_of_subkeys) {
        my $name = encode('cp1252', $child->get_name);
        tell_key(length($path) ? "$path\\$name" : $name, $child);
    }
}
tell_key('', Parse::Win32Registry->new($ARGV[0])->get_root_key);

#!/usr/bin/env bash
# Ansible's own checks of the collection, as it is built and installed: ansible-lint (with yamllint), and of
# "ansible-test sanity" those that need nothing but what Debian has. ansible-doc, runtime-metadata,
# validate-modules and yamllint are left out there: they want an environment of their own with pip.
#
#   lint-collection.sh COLLECTION
set -euo pipefail

collection=$(realpath "$1")
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export HOME=$place ANSIBLE_HOME=$place/home ANSIBLE_COLLECTIONS_PATH=$place ANSIBLE_NOCOLOR=1 LC_ALL=C.UTF-8

ansible-galaxy collection build "$collection" --output-path "$place" >/dev/null
ansible-galaxy collection install "$place"/varden-printer-*.tar.gz -p "$place" >/dev/null 2>&1
cd "$place/ansible_collections/varden/printer"

ansible-lint --offline --nocolor --strict --profile production playbooks roles examples plugins meta/runtime.yml

# The checks know what belongs to the collection by its repository.
git init -q .
git add .
for check in action-plugin-docs compile line-endings no-assert no-basestring no-dict-iteritems \
    no-dict-iterkeys no-dict-itervalues no-get-exception no-illegal-filenames no-main-display \
    no-smart-quotes no-unicode-literals replace-urlopen shebang symlinks use-argspec-type-path \
    use-compat-six empty-init future-import-boilerplate metaclass-boilerplate; do
    ansible-test sanity --local --python "$(python3 -c 'import sys; print("%d.%d" % sys.version_info[:2])')" \
        --test "$check" >"$place/$check.log" 2>&1 && state=passed || state=FAILED
    echo "$check: $state"
    [[ $state == passed ]] || { tail -n 8 "$place/$check.log"; failed=1; }
done
exit "${failed:-0}"

# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: settings
short_description: Changes settings of a printer as a whole or not at all
version_added: 2.3.0
description:
  - Reads the printer, sends what differs, reads again, and brings back what was when anything is not as it should be.
  - The task has changed something exactly when the printer has.
  - When the printer is neither as it was nor as wanted (exit code 5), or C(varden) was killed in the middle, the task
    fails, says that a person is needed, and names the journal; C(varden recover) goes on from there.
options:
  settings:
    description:
      - What the printer is to have, by the names of C(varden list). Numbers are in the units that people see.
      - A bare C(ON) or C(OFF), which YAML takes for a truth, is the word again. Texts and hexadecimal values want
        quotation marks, and are refused without them where YAML takes them for a number or a truth. A number that begins
        with 0 is octal for YAML.
    type: dict
  file:
    description:
      - A settings file of the controller (C(.dt1), C(.dt2) or C(.json)); what I(settings) names counts more. It is
        sought like the source of M(ansible.builtin.copy).
    type: str
  allow_link_change:
    description: Also changes what the link in use stands on, such as the printer's address.
    type: bool
    default: false
  stop_bit_is:
    description: What the printer has as its stop bit, which it does not report; it is sent along unless another is wanted.
    type: str
  if_unchanged:
    description: Only when the printer is as this settings file says.
    type: str
  expect_host:
    description: Only when the printer's host name is this one.
    type: str
  resume:
    description:
      - When an earlier change was cut off and its journal stands, ends it and goes on, provided that the printer holds
        of each setting what it held before or what was wanted then. Of the stop bit, which it does not report, this is
        known where I(stop_bit_is) tells what went out, or where it is sent again.
    type: bool
    default: false
extends_documentation_fragment:
  - varden.printer.printer
  - varden.printer.printer.pause
  - varden.printer.printer.writing
  - varden.printer.printer.state
attributes:
  check_mode:
    description: Only tells what would be changed.
    support: full
  diff_mode:
    description: Tells what differs.
    support: full
seealso:
  - module: varden.printer.info
  - module: varden.printer.backup
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: The feed of all printers
  varden.printer.settings:
    settings:
      feed-adj: -1.5
      euro-code: "B0"

- name: What a file says, but with a feed of its own
  varden.printer.settings:
    file: shop.json
    settings:
      feed-adj: 0.5

- name: A new address, which tasks after this one use
  varden.printer.settings:
    settings:
      ip-address: "{{ new_address }}"
    allow_link_change: true
"""

RETURN = r"""
target:
  description: Where the printer is now, as C(varden) names it.
  returned: always
  type: str
exit_code:
  description: The exit code of C(varden).
  returned: when the printer was asked
  type: int
before:
  description: What was read before, by names.
  returned: always
  type: dict
after:
  description: What was read last, or in check mode would be, by names.
  returned: always
  type: dict
results:
  description:
    - What has become of each setting, C(same), C(changed), C(unverifiable), C(refused), C(mismatch), C(restored) or
      C(lost).
  returned: always
  type: dict
plan:
  description: The commands in their order, with what they change.
  returned: always
  type: list
  elements: dict
end:
  description: How it ended, C(unchanged), C(changed), C(would-change), C(not-begun), C(undone) or C(person-needed).
  returned: always
  type: str
left_out:
  description: Settings of the file that a printer only reports.
  returned: always
  type: list
  elements: str
problems:
  description: Everything that is wrong with the settings or the file; then nothing was sent.
  returned: always
  type: list
  elements: dict
moved_to:
  description: Where the printer is now when its address or line was changed.
  returned: always
  type: str
journal:
  description: The journal of a change that is neither whole nor undone.
  returned: when a person is needed
  type: str
person_needed:
  description: Whether the printer is neither as it was nor as wanted, or nobody knows.
  returned: when the task fails
  type: bool
ansible_facts:
  description:
    - C(varden_moved), with I(from), the printer as it was named, and I(to), where it is now. Tasks that name it as
      I(from) does ask it at I(to).
  returned: when the printer has moved
  type: dict
diff:
  description: What differs, as C(--diff) shows it.
  returned: when the printer was changed, or would be
  type: dict
msg:
  description: What went wrong.
  returned: when the task fails or the printer is unreachable
  type: str
"""

# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: rollout_step
short_description: One step of the role rollout on one printer
version_added: 2.3.0
description:
  - What the roles C(varden.printer.rollout) and C(varden.printer.rollback) do on each printer. It keeps what has come
    of it in the rollout's folder, whatever becomes of the controller.
options:
  step:
    description:
      - C(prepare) backs the printer up, unless it was touched by this rollout already; C(change) changes it; C(back)
        brings back what the backup holds of the settings that the rollout has changed.
      - C(prepare) is given what C(change) is given, so that a printer that lacks a variable fails before any of its batch
        is changed.
      - A printer on which C(prepare) has failed fails in C(change), so that all of a batch are prepared before it is
        decided whether any of them is changed.
    type: str
    required: true
    choices: [prepare, change, back]
  folder:
    description: The rollout's folder.
    type: path
    required: true
  title:
    description: The title of the summary's page.
    type: str
    default: Rollout
  settings:
    description: As of M(varden.printer.settings).
    type: dict
  file:
    description: As of M(varden.printer.settings).
    type: str
  faults_allowed:
    description: Nothing is begun any more when this run has failed on more printers.
    type: int
    default: 0
  allow_link_change:
    description: As of M(varden.printer.settings).
    type: bool
    default: false
  stop_bit_is:
    description: As of M(varden.printer.settings).
    type: str
  expect_host:
    description: As of M(varden.printer.settings).
    type: str
  resume:
    description: As of M(varden.printer.settings).
    type: bool
    default: true
extends_documentation_fragment:
  - varden.printer.printer
  - varden.printer.printer.pause
  - varden.printer.printer.writing
  - varden.printer.printer.state
attributes:
  check_mode:
    description: Only tells what would be changed; backs nothing up.
    support: full
  diff_mode:
    description: Tells what differs.
    support: full
seealso:
  - module: varden.printer.rollout_summary
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: Change the printers of this batch
  varden.printer.rollout_step:
    step: change
    folder: rollouts/autumn
    settings:
      feed-adj: -1.5
"""

RETURN = r"""
backup:
  description: The printer's backup.
  returned: with C(prepare)
  type: str
fault:
  description: Whether the printer fails with C(change), since it could not be backed up.
  returned: with C(prepare)
  type: bool
target:
  description: Where the printer is now, as C(varden) names it.
  returned: when the printer was asked
  type: str
exit_code:
  description: The exit code of C(varden).
  returned: when the printer was asked
  type: int
before:
  description: What was read before, by names.
  returned: when the printer was asked
  type: dict
after:
  description: What was read last, or in check mode would be, by names.
  returned: when the printer was asked
  type: dict
results:
  description:
    - What has become of each setting, C(same), C(changed), C(unverifiable), C(refused), C(mismatch), C(restored) or
      C(lost).
  returned: when the printer was asked
  type: dict
plan:
  description: The commands in their order, with what they change.
  returned: when the printer was asked
  type: list
  elements: dict
end:
  description: How it ended, C(unchanged), C(changed), C(would-change), C(not-begun), C(undone) or C(person-needed).
  returned: when the printer was asked
  type: str
left_out:
  description: Settings of the file that a printer only reports.
  returned: when the printer was asked
  type: list
  elements: str
problems:
  description: Everything that is wrong with the settings or the file; then nothing was sent.
  returned: when the printer was asked
  type: list
  elements: dict
moved_to:
  description: Where the printer is now when its address or line was changed.
  returned: when the printer was asked
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
  returned: when the task or the backup fails, or the printer is unreachable
  type: str
"""

# SPDX-License-Identifier: MIT
# Install rules and the packages that find_package and pkg-config read.

// SPDX-License-Identifier: Apache-2.0
// Empty: its target exists for the headers that are precompiled with it.
